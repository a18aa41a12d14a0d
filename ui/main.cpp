// SPDX-License-Identifier: GPL-3.0-or-later
//
// tonbrook: the window.
#include "engine/BuildInfo.h"
#include "localization/LanguageManager.h"
#include "ui/DesktopRevealer.h"
#include "ui/FilePanelPresenter.h"
#include "ui/SupportWindowPresenter.h"
#include "ui/TonbrookApp.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QQmlExtensionPlugin>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QUrl>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(Tonbrook_AppPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_StylePlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_UiPlugin)

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Quillmere Tools"));
    QApplication::setApplicationName(QStringLiteral("Tonbrook"));
    QApplication::setApplicationVersion(QLatin1StringView(BuildInfo::version));
    QApplication::setDesktopFileName(QLatin1StringView(BuildInfo::appId));
    // The installed theme icon where there is one; the same drawing built in
    // otherwise (a build tree, an unusual prefix).
    QApplication::setWindowIcon(QIcon::fromTheme(QLatin1StringView(BuildInfo::appId),
                                                 QIcon(QStringLiteral(":/icons/tonbrook.svg"))));
    QQuickStyle::setStyle(QStringLiteral("Basic"));

    // Files and folders given to the program (a file manager's "Open with"
    // passes paths or file URLs), in the order given.
    QStringList paths;
    const QStringList arguments = QApplication::arguments().mid(1);
    for (const QString &argument : arguments) {
        const QUrl url(argument);
        paths.append(url.isLocalFile() ? url.toLocalFile()
                                       : QFileInfo(argument).absoluteFilePath());
    }

    auto support = std::make_shared<SupportWindowPresenter>();
    TonbrookApp tonbrook(MainViewModel::Services::standard(std::make_shared<FilePanelPresenter>(),
                                                           std::make_shared<DesktopRevealer>(),
                                                           support),
                         LanguageManager::shared(), paths);
    support->setEngine(&tonbrook.engine());
    if (!tonbrook.window())
        return 1;

    // For start-up measurements and install checks: say when the first frame
    // is shown, and with "quit" leave right after it.
    const QByteArray firstFrame = qgetenv("TONBROOK_FIRST_FRAME");
    if (!firstFrame.isEmpty()) {
        QObject::connect(
            tonbrook.window(), &QQuickWindow::frameSwapped, &app,
            [quit = firstFrame == "quit"] {
                std::fputs("tonbrook: first frame\n", stderr);
                std::fflush(stderr);
                if (quit)
                    QCoreApplication::quit();
            },
            Qt::SingleShotConnection);
    }
    return QApplication::exec();
}

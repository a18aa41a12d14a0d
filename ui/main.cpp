// SPDX-License-Identifier: GPL-3.0-or-later
//
// tonbrook: the window.
#include "engine/BuildInfo.h"
#include "files/UserPreferences.h"
#include "localization/LanguageManager.h"
#include "model/StandardPath.h"
#include "ui/DesktopNotifier.h"
#include "ui/DesktopRevealer.h"
#include "ui/FilePanelPresenter.h"
#include "ui/SupportWindowPresenter.h"
#include "ui/TonbrookApp.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QQmlExtensionPlugin>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QUrl>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

Q_IMPORT_QML_PLUGIN(Tonbrook_AppPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_LocalizationPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_StylePlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_UiPlugin)

namespace {

int signalPipe[2] = {-1, -1};

void onStoppingSignal(int signal)
{
    const char byte = static_cast<char>(signal);
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[1], &byte, 1);
}

// A session that ends, a `kill` or Ctrl-C in the terminal that started the
// window: quit as the window's close does, so every ffmpeg is stopped and its
// hidden file removed before the process goes.
void quitOnStoppingSignals(QCoreApplication &app)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [] {
        char byte = 0;
        if (::read(signalPipe[0], &byte, 1) == 1)
            QCoreApplication::exit(128 + static_cast<unsigned char>(byte));
    });
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, onStoppingSignal);
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    quitOnStoppingSignals(app);
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
    // passes paths or file URLs), in the order given, their bytes kept; Qt
    // has taken its own options out of argv by now.
    QStringList paths;
    for (int i = 1; i < argc; ++i) {
        const QString argument = decodedPath(QByteArray(argv[i]));
        const QUrl url(argument);
        paths.append(url.isLocalFile() ? localPathOf(url) : standardizedPath(argument));
    }

    auto support = std::make_shared<SupportWindowPresenter>();
    LanguageManager language(UserPreferences::open(), QLocale::system().uiLanguages());
    // The output folder, the settings and the window's size, as the user left them.
    const std::shared_ptr<QSettings> preferences(UserPreferences::open());
    TonbrookApp tonbrook(AppServices{.panelPresenter = std::make_shared<FilePanelPresenter>(),
                                     .bookmarkStore = OutputFolderBookmarkStore(preferences),
                                     .settingsStore = SettingsStore(preferences),
                                     .supportPresenter = support,
                                     .revealer = std::make_shared<DesktopRevealer>(),
                                     .notifier = std::make_shared<DesktopNotifier>()},
                         language, paths);
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

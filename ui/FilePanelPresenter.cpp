// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FilePanelPresenter.h"

#include "localization/L.h"
#include "ui/style/TBTheme.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QWindow>

namespace {

QString patterns(const QStringList &extensions)
{
    QStringList globs;
    for (const QString &extension : extensions)
        globs.append(QStringLiteral("*.") + extension);
    return globs.join(u' ');
}

// Qt's directory dialog picks one folder; its two file views can pick several.
void allowSeveral(QFileDialog &dialog)
{
    for (const char *name : {"listView", "treeView"}) {
        if (auto *view = dialog.findChild<QAbstractItemView *>(QLatin1StringView(name)))
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    }
}

QStringList run(QFileDialog &dialog)
{
    dialog.winId();
    if (QWindow *window = dialog.windowHandle())
        window->setTransientParent(QGuiApplication::focusWindow());
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return dialog.selectedFiles();
}

} // namespace

std::unique_ptr<QFileDialog> FilePanelPresenter::makeDialog(Panel panel,
                                                            const QStringList &extensions,
                                                            const QString &defaultName)
{
    auto dialog = std::make_unique<QFileDialog>();
    // Qt's own dialog rather than the desktop's, so it can wear the window's palette.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setPalette(TBTheme::widgetPalette());
    dialog->setModal(true);
    dialog->setDirectory(QDir::home());
    switch (panel) {
    case Panel::Files:
        dialog->setWindowTitle(L::text(L::PanelSelectFiles));
        dialog->setFileMode(QFileDialog::ExistingFiles);
        if (!extensions.isEmpty())
            dialog->setNameFilter(L::text(L::AudioFilesFilter) + QStringLiteral(" (") +
                                  patterns(extensions) + u')');
        break;
    case Panel::Folders:
        dialog->setWindowTitle(L::text(L::PanelSelectFolder));
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
        allowSeveral(*dialog);
        break;
    case Panel::Destination:
        dialog->setWindowTitle(L::text(L::PanelChooseDestination));
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
        dialog->setLabelText(QFileDialog::Accept, L::text(L::Choose));
        break;
    case Panel::Save: {
        const QString extension = extensions.value(0);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        dialog->setFileMode(QFileDialog::AnyFile);
        dialog->setDefaultSuffix(extension);
        dialog->setNameFilter(extension.toUpper() + QStringLiteral(" (*.") + extension + u')');
        const QFileInfo proposed(defaultName);
        if (proposed.isAbsolute() && proposed.dir().exists())
            dialog->setDirectory(proposed.dir());
        dialog->selectFile(proposed.fileName());
        break;
    }
    }
    return dialog;
}

QStringList FilePanelPresenter::presentFilePanel(const QStringList &allowedExtensions)
{
    return run(*makeDialog(Panel::Files, allowedExtensions));
}

QStringList FilePanelPresenter::presentFolderPanel()
{
    return run(*makeDialog(Panel::Folders));
}

std::optional<QString> FilePanelPresenter::presentDestinationFolderPanel()
{
    const QStringList chosen = run(*makeDialog(Panel::Destination));
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first());
}

std::optional<QString> FilePanelPresenter::presentSavePanel(const QString &defaultName,
                                                            const QString &allowedExtension)
{
    const QStringList chosen = run(*makeDialog(Panel::Save, {allowedExtension}, defaultName));
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first());
}

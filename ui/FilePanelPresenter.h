// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/FilePanelPresenting.h"

#include <memory>

class QFileDialog;

// The four dialogs as Qt file dialogs in the window's dark palette, titled
// with the string table's prompts in the language of the moment, modal over
// the window that has focus.
class FilePanelPresenter final : public FilePanelPresenting
{
public:
    enum class Panel
    {
        Files,
        Folders,
        Destination,
        Save,
    };

    QStringList presentFilePanel(const QStringList &allowedExtensions) override;
    QStringList presentFolderPanel() override;
    std::optional<QString> presentDestinationFolderPanel() override;
    std::optional<QString> presentSavePanel(const QString &defaultName,
                                            const QString &allowedExtension) override;

    // The dialog exactly as it would be shown, for the panel and its
    // arguments (extensions for Files; name and extension for Save). Nothing
    // is shown until it is run.
    static std::unique_ptr<QFileDialog> makeDialog(Panel panel, const QStringList &extensions = {},
                                                   const QString &defaultName = {});
};

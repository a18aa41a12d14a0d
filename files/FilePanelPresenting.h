// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The application's four modal file dialogs, behind an interface so that the
// controller can be driven without them. Each returns what the user chose;
// a cancelled dialog gives an empty list or absent.
class FilePanelPresenting
{
public:
    virtual ~FilePanelPresenting() = default;

    // Several files whose extension is one of `allowedExtensions`.
    virtual QStringList presentFilePanel(const QStringList &allowedExtensions) = 0;
    // Several folders.
    virtual QStringList presentFolderPanel() = 0;
    // One folder, which may be created in the dialog.
    virtual std::optional<QString> presentDestinationFolderPanel() = 0;
    // A file to save, proposed as `defaultName` (a bare name, or a full path
    // whose folder the dialog opens in), with the one extension.
    virtual std::optional<QString> presentSavePanel(const QString &defaultName,
                                                    const QString &allowedExtension) = 0;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/FilePanelPresenting.h"

// Where a front end has no screen to show a dialog on: every dialog is cancelled.
class NoFilePanels final : public FilePanelPresenting
{
public:
    QStringList presentFilePanel(const QStringList &) override { return {}; }
    QStringList presentFolderPanel() override { return {}; }
    std::optional<QString> presentDestinationFolderPanel() override { return std::nullopt; }
    std::optional<QString> presentSavePanel(const QString &, const QString &) override
    {
        return std::nullopt;
    }
};

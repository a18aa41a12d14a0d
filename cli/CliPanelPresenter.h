// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/FilePanelPresenting.h"

// The command line's answers to the window's dialogs: the report goes where
// --report says, and nothing else is ever asked.
class CliPanelPresenter final : public FilePanelPresenting
{
public:
    explicit CliPanelPresenter(std::optional<QString> reportPath)
        : m_reportPath(std::move(reportPath))
    {}

    QStringList presentFilePanel(const QStringList &) override { return {}; }
    QStringList presentFolderPanel() override { return {}; }
    std::optional<QString> presentDestinationFolderPanel() override { return std::nullopt; }
    std::optional<QString> presentSavePanel(const QString &, const QString &) override
    {
        return m_reportPath;
    }

private:
    std::optional<QString> m_reportPath;
};

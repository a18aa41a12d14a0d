// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/FilePanelPresenting.h"

#include <QStringList>

#include <optional>

class ScriptedPanels final : public FilePanelPresenting
{
public:
    QStringList files;
    QStringList folders;
    std::optional<QString> destination;
    std::optional<QString> savePath;
    int saveRequests = 0;
    QString proposedName;

    QStringList presentFilePanel(const QStringList &) override { return files; }
    QStringList presentFolderPanel() override { return folders; }
    std::optional<QString> presentDestinationFolderPanel() override { return destination; }
    std::optional<QString> presentSavePanel(const QString &defaultName, const QString &) override
    {
        ++saveRequests;
        proposedName = defaultName;
        return savePath;
    }
};

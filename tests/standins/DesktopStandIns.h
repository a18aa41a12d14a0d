// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/FolderRevealing.h"
#include "app/RunNotifying.h"
#include "files/FilePanelPresenting.h"

// Dialogs that answer what the test set (or nothing), and count what was asked.
struct ScriptedPanels final : public FilePanelPresenting
{
    int fileRequests = 0;
    int folderRequests = 0;
    std::optional<QString> destination;
    std::optional<QString> savePath;
    int saveRequests = 0;
    QString proposedName;

    QStringList presentFilePanel(const QStringList &) override
    {
        ++fileRequests;
        return {};
    }
    QStringList presentFolderPanel() override
    {
        ++folderRequests;
        return {};
    }
    std::optional<QString> presentDestinationFolderPanel() override { return destination; }
    std::optional<QString> presentSavePanel(const QString &defaultName, const QString &) override
    {
        ++saveRequests;
        proposedName = defaultName;
        return savePath;
    }
};

struct RecordingRevealer final : public FolderRevealing
{
    QStringList revealed;
    void revealFolder(const QString &path) override { revealed.append(path); }
};

// Keeps every notification as "title: body".
struct RecordingNotifier final : public RunNotifying
{
    QStringList notified;
    void runEnded(const QString &title, const QString &body) override
    {
        notified.append(title + QStringLiteral(": ") + body);
    }
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/FolderRevealing.h"
#include "app/RunNotifying.h"
#include "files/FilePanelPresenting.h"

#include <QStringList>

#include <optional>

// Dialogs that answer what the test set (or nothing), and count what was asked.
class ScriptedPanels final : public FilePanelPresenting
{
public:
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

class RecordingRevealer final : public FolderRevealing
{
public:
    QStringList revealed;
    void revealFolder(const QString &path) override { revealed.append(path); }
};

// Keeps every notification as "title: body".
class RecordingNotifier final : public RunNotifying
{
public:
    QStringList notified;
    void runEnded(const QString &title, const QString &body) override
    {
        notified.append(title + QStringLiteral(": ") + body);
    }
};

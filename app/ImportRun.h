// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/CancellationToken.h"
#include "files/FileImporting.h"

#include <QObject>

#include <memory>

class QThreadPool;

// An import of dropped or chosen paths off the GUI thread, one path after
// the other, so that a folder of 100,000 files never holds the window and its
// files reach the queue while later paths are still being scanned. Items
// already queued, or found earlier in the same import, are not found again.
class ImportRun : public QObject
{
    Q_OBJECT

public:
    explicit ImportRun(QThreadPool &pool, QObject *parent = nullptr);
    ~ImportRun() override;

    bool isRunning() const { return m_running; }
    void start(const QStringList &paths, const QList<AudioFileItem> &queued,
               std::shared_ptr<const FileImporting> importer);
    // Stops after the path being scanned; what it finds is dropped.
    void cancel();

Q_SIGNALS:
    // New items of one path, in the order found.
    void found(const QList<AudioFileItem> &items);
    // The whole import's counts (its items already went out through found()).
    void finished(const ImportSummary &totals, bool cancelled);
    void runningChanged();

private:
    QThreadPool &m_pool;
    CancellationTokenPtr m_token = std::make_shared<CancellationToken>();
    bool m_running = false;
};

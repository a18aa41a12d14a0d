// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/CancellationToken.h"
#include "engine/LoudnessAnalyzing.h"
#include "model/FileStamp.h"
#include "model/LoudnessMeasurement.h"

#include <QObject>
#include <QSet>
#include <QUuid>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QThreadPool;

// The measuring of queued files in the background, `width` at a time. Each
// import starts a batch; batches share one token and one progress count,
// which start again once nothing is left to measure.
class AnalysisRun : public QObject
{
    Q_OBJECT

public:
    struct Result
    {
        QUuid id;
        std::optional<LoudnessMeasurement> measurement;
        // The source as it was just before it was measured.
        std::optional<FileStamp> stamp;
        // The bundled ffmpeg could not run: the installation's fault, not the file's.
        std::optional<QString> installationFault{};
        // The file could not be measured (not cancelled, not the installation).
        bool failed = false;
    };

    AnalysisRun(QThreadPool &pool, int width, QObject *parent = nullptr);
    ~AnalysisRun() override;

    bool isRunning() const { return m_running; }
    int done() const { return m_done; }
    int total() const { return m_total; }
    // The items waiting for or being measured.
    const QSet<QUuid> &pending() const { return m_pending; }

    // Measures these files (id and path) at this target and ceiling.
    void start(std::vector<std::pair<QUuid, QString>> files,
               std::shared_ptr<const LoudnessAnalyzing> analyzer, double target, double ceiling);
    // Stops what runs and starts afresh: later batches get a new token.
    void stop();
    // Items that left the queue are no longer waited for.
    void forget(const QSet<QUuid> &ids);

Q_SIGNALS:
    // A file's measuring starts now (the others of its batch wait their turn).
    void started(const QUuid &id);
    // One file's answer, before the progress counts it.
    void measured(const AnalysisRun::Result &result);
    void installationFault(const QString &reason);
    // Running, progress or the pending set changed.
    void changed();

private:
    void reset();

    QThreadPool &m_pool;
    int m_width;
    CancellationTokenPtr m_token = std::make_shared<CancellationToken>();
    QSet<QUuid> m_pending;
    bool m_running = false;
    int m_done = 0;
    int m_total = 0;
};

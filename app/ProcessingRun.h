// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/JobOutcome.h"
#include "engine/CancellationToken.h"
#include "engine/LoudnessProcessing.h"
#include "engine/OutputEncoding.h"
#include "model/AudioFileItem.h"
#include "model/ProcessingSettings.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QUuid>

#include <memory>
#include <optional>
#include <vector>

class QThreadPool;

// One processing run: where each file goes, the jobs `width` at a time in
// queue order, the count and the file in progress. A new run may start while
// a cancelled one still winds down; the old run's outcomes still reach their
// items, but only the latest run counts progress and finishes.
class ProcessingRun : public QObject
{
    Q_OBJECT

public:
    // A file of a run, as it was when the run started.
    struct Job
    {
        AudioFileItem item;
        QString destination;
        OutputEncoding encoding;
        // An earlier run's file is already at the destination: the job only says so.
        bool alreadyWritten = false;

        // Where the result went: the planned folder, the name actually written.
        QString writtenPath(const ProcessingResult &result) const
        {
            return destination.left(destination.lastIndexOf(u'/') + 1) + result.outputFileName;
        }
    };

    ProcessingRun(QThreadPool &pool, int width, QObject *parent = nullptr);
    ~ProcessingRun() override;

    // Plans a destination for every item (leftovers of killed runs in those
    // folders go now) and starts the jobs.
    void start(const QList<AudioFileItem> &items, const ProcessingSettings &settings,
               std::shared_ptr<const LoudnessProcessing> processor);
    void cancel();

    int processedCount() const { return m_processedCount; }
    // Files of the latest run that failed so far.
    int failedCount() const { return m_failedCount; }
    // How long the latest run has been going; 0 before any run.
    qint64 elapsedMilliseconds() const { return m_clock.isValid() ? m_clock.elapsed() : 0; }
    int total() const { return m_total; }
    const std::optional<QString> &currentFileName() const { return m_currentFileName; }
    void clearCurrentFileName();
    // Back to nothing processed, as before any run.
    void clearCount();
    // The latest run's jobs, for its summary.
    const std::vector<Job> &jobs() const { return *m_jobs; }
    // Where the latest run wrote (or meant to write) an item: the name actually
    // written, which is a numbered one when the planned name was taken meanwhile.
    std::optional<QString> destinationOf(const QUuid &id) const;

Q_SIGNALS:
    // A run is planned and its count reset; its first jobs start right after.
    void runStarted();
    void jobStarted(const QUuid &id);
    // How far a running job has written its file, 0 to 1 (in steps of 1 %).
    void jobProgress(const QUuid &id, double fraction);
    // A job's output, and whether its run had been cancelled by then.
    void jobFinished(const ProcessingRun::Job &job, const JobOutput &output, bool cancelled);
    void progressChanged();
    // The latest run is over; `cancelled` when the user stopped it.
    void finished(bool cancelled);

private:
    static std::vector<Job> plan(const QList<AudioFileItem> &items,
                                 const ProcessingSettings &settings,
                                 QHash<QUuid, QString> &destinations);

    QThreadPool &m_pool;
    int m_width;
    CancellationTokenPtr m_token = std::make_shared<CancellationToken>();
    std::shared_ptr<std::vector<Job>> m_jobs = std::make_shared<std::vector<Job>>();
    QHash<QUuid, QString> m_destinations;
    // Each run's number; a run's late steps apply only while it is the latest.
    int m_run = 0;
    int m_processedCount = 0;
    int m_failedCount = 0;
    QElapsedTimer m_clock;
    int m_total = 0;
    std::optional<QString> m_currentFileName;
};

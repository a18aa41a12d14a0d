// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ProcessingRun.h"

#include "app/BoundedTaskGroup.h"
#include "engine/PartFile.h"
#include "files/OutputDestination.h"
#include "model/StandardPath.h"

#include <QPointer>

#include <set>

ProcessingRun::ProcessingRun(QThreadPool &pool, int width, QObject *parent)
    : QObject(parent)
    , m_pool(pool)
    , m_width(width)
{}

ProcessingRun::~ProcessingRun()
{
    m_token->cancel();
}

std::vector<ProcessingRun::Job> ProcessingRun::plan(const QList<AudioFileItem> &items,
                                                    const ProcessingSettings &settings,
                                                    QHash<QUuid, QString> &destinations)
{
    std::vector<Job> jobs;
    jobs.reserve(items.size());
    QSet<QString> reserved;
    for (const AudioFileItem &item : items) {
        const OutputDestination destination =
            OutputDestination::forItem(item, settings, *settings.outputFolder, reserved);
        destinations.insert(item.id, destination.path);
        jobs.push_back({item, destination.path, destination.encoding, destination.existing});
    }
    // What killed runs left in these folders goes now; a live run's files stay.
    QSet<QString> folders;
    for (const Job &job : jobs)
        folders.insert(job.destination.left(job.destination.lastIndexOf(u'/')));
    for (const QString &folder : std::as_const(folders))
        PartFile::removeAbandoned(folder);
    return jobs;
}

void ProcessingRun::start(const QList<AudioFileItem> &items, const ProcessingSettings &settings,
                          std::shared_ptr<const LoudnessProcessing> processor)
{
    m_token = std::make_shared<CancellationToken>();
    const CancellationTokenPtr token = m_token;
    m_destinations.clear();
    auto jobs = std::make_shared<std::vector<Job>>(plan(items, settings, m_destinations));
    m_jobs = jobs;
    const int run = ++m_run;
    m_processedCount = 0;
    m_failedCount = 0;
    m_clock.start();
    m_total = static_cast<int>(jobs->size());
    m_currentFileName.reset();
    Q_EMIT runStarted();
    Q_EMIT progressChanged();

    using Entry = size_t;
    std::vector<Entry> indices(jobs->size());
    for (size_t i = 0; i < indices.size(); ++i)
        indices[i] = i;

    BoundedTaskGroup<Entry, JobOutput>::Callbacks callbacks;
    // Jobs run in queue order, so the first file still processing is the
    // lowest job index in flight; no walk over the queue per result.
    auto inFlight = std::make_shared<std::set<Entry>>();
    callbacks.submitted = [this, jobs, inFlight](const Entry &index) {
        inFlight->insert(index);
        Q_EMIT jobStarted((*jobs)[index].item.id);
    };
    const QPointer<ProcessingRun> self(this);
    callbacks.work = [processor, token, settings, jobs, self](const Entry &index) -> JobOutput {
        const Job &job = (*jobs)[index];
        if (job.alreadyWritten)
            return ProcessingResult{.sourceFileName = fileNameOf(job.item.sourcePath),
                                    .outputFileName = fileNameOf(job.destination),
                                    .outcome = ProcessingOutcome::Skipped};
        // Told to the GUI thread a whole per cent at a time.
        int told = -1;
        const auto progress = [&job, &told, self](double fraction) {
            const int percent = static_cast<int>(fraction * 100);
            if (percent == told)
                return;
            told = percent;
            QMetaObject::invokeMethod(
                self,
                [self, id = job.item.id, percent] {
                    if (self)
                        Q_EMIT self->jobProgress(id, percent / 100.0);
                },
                Qt::QueuedConnection);
        };
        return JobOutcome::run(
            [&] {
                return processor->processReporting(job.item, job.destination, job.encoding,
                                                   settings, *token, progress);
            },
            displayedPath(fileNameOf(job.item.sourcePath)));
    };
    callbacks.delivered = [this, jobs, token, run, inFlight](const Entry &index,
                                                             JobOutput &&output) {
        inFlight->erase(index);
        const Job &job = (*jobs)[index];
        if (const auto *result = std::get_if<ProcessingResult>(&output);
            result && run == m_run && m_destinations.contains(job.item.id))
            m_destinations.insert(job.item.id, job.writtenPath(*result));
        Q_EMIT jobFinished(job, output, token->isCancelled());
        if (run != m_run)
            return;
        ++m_processedCount;
        if (const auto *failure = std::get_if<JobFailure>(&output);
            failure && failure->kind == JobFailure::Kind::Failed && !token->isCancelled())
            ++m_failedCount;
        if (!inFlight->empty())
            m_currentFileName = fileNameOf((*jobs)[*inFlight->begin()].item.sourcePath);
        Q_EMIT progressChanged();
    };
    callbacks.finished = [this, token, run] {
        if (run == m_run)
            Q_EMIT finished(token->isCancelled());
    };
    BoundedTaskGroup<Entry, JobOutput>::start(this, &m_pool, m_width, std::move(indices), token,
                                              std::move(callbacks));
}

void ProcessingRun::cancel()
{
    m_token->cancel();
}

void ProcessingRun::clearCurrentFileName()
{
    if (m_currentFileName) {
        m_currentFileName.reset();
        Q_EMIT progressChanged();
    }
}

void ProcessingRun::clearCount()
{
    m_processedCount = 0;
    m_failedCount = 0;
    Q_EMIT progressChanged();
}

std::optional<QString> ProcessingRun::destinationOf(const QUuid &id) const
{
    const auto found = m_destinations.constFind(id);
    return found == m_destinations.cend() ? std::nullopt : std::optional(*found);
}

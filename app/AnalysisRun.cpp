// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AnalysisRun.h"

#include "app/BoundedTaskGroup.h"
#include "engine/AudioMetadata.h"
#include "engine/FFmpegError.h"

AnalysisRun::AnalysisRun(QThreadPool &pool, int width, QObject *parent)
    : QObject(parent)
    , m_pool(pool)
    , m_width(width)
{}

AnalysisRun::~AnalysisRun()
{
    m_token->cancel();
}

void AnalysisRun::start(std::vector<std::pair<QUuid, QString>> files,
                        std::shared_ptr<const LoudnessAnalyzing> analyzer, double target,
                        double ceiling)
{
    if (files.empty())
        return;
    m_total += static_cast<int>(files.size());
    for (const auto &[id, path] : files)
        m_pending.insert(id);
    m_running = true;
    Q_EMIT changed();

    using Entry = std::pair<QUuid, QString>;
    const CancellationTokenPtr token = m_token;
    BoundedTaskGroup<Entry, Result>::Callbacks callbacks;
    callbacks.work = [analyzer, token, target, ceiling](const Entry &entry) -> Result {
        try {
            const std::optional<FileStamp> stamp = AudioMetadata::stamp(entry.second);
            LoudnessMeasurement measurement =
                analyzer->analyze(entry.second, target, ceiling, *token);
            // ffmpeg stopped half-way still prints what it measured of the part
            // it read; that is not the file's loudness.
            if (token->isCancelled())
                return {.id = entry.first};
            if (!stamp)
                return {.id = entry.first, .failed = true};
            return {.id = entry.first, .measurement = measurement, .stamp = stamp};
        } catch (const FFmpegError &error) {
            const std::optional<QString> fault = error.installationFault();
            return {.id = entry.first, .installationFault = fault, .failed = !fault};
        } catch (...) {
            return {.id = entry.first, .failed = !token->isCancelled()};
        }
    };
    callbacks.submitted = [this](const Entry &entry) { Q_EMIT started(entry.first); };
    callbacks.delivered = [this](const Entry &, Result &&result) {
        if (result.installationFault) {
            Q_EMIT installationFault(*result.installationFault);
            return;
        }
        Q_EMIT measured(result);
        m_pending.remove(result.id);
        ++m_done;
        Q_EMIT changed();
    };
    callbacks.finished = [this] {
        // Other batches may still be going, or a cancelled one left entries unsent.
        if (m_pending.isEmpty() && (m_running || m_done != 0 || m_total != 0))
            reset();
    };
    BoundedTaskGroup<Entry, Result>::start(this, &m_pool, m_width, std::move(files), token,
                                           std::move(callbacks));
}

void AnalysisRun::stop()
{
    m_token->cancel();
    m_token = std::make_shared<CancellationToken>();
    reset();
}

void AnalysisRun::forget(const QSet<QUuid> &ids)
{
    m_pending.subtract(ids);
}

void AnalysisRun::reset()
{
    m_pending.clear();
    m_running = false;
    m_done = 0;
    m_total = 0;
    Q_EMIT changed();
}

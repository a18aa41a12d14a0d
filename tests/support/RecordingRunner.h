// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FFmpegRunner.h"

#include <QList>

#include <mutex>

// The real runner, keeping every command line and what ffmpeg printed, so a
// test can read the summaries the product itself never parses.
class RecordingRunner final : public FFmpegRunning
{
public:
    struct Run
    {
        QStringList arguments;
        FFmpegResult result;
    };

    explicit RecordingRunner(const QString &ffmpegPath)
        : m_runner(ffmpegPath)
    {}

    FFmpegResult run(const QStringList &arguments,
                     const CancellationToken &cancellation) const override
    {
        FFmpegResult result = m_runner.run(arguments, cancellation);
        const std::lock_guard guard(m_lock);
        m_runs.append({arguments, result});
        return result;
    }

    QList<Run> takeRuns() const
    {
        const std::lock_guard guard(m_lock);
        return std::exchange(m_runs, {});
    }

private:
    FFmpegRunner m_runner;
    mutable std::mutex m_lock;
    mutable QList<Run> m_runs;
};

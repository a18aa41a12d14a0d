// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FFmpegError.h"
#include "engine/FFmpegRunning.h"

#include <QList>

#include <functional>
#include <mutex>

// Stands in for ffmpeg: records the arguments of every call and answers from a script.
class FakeFFmpegRunner final : public FFmpegRunning
{
public:
    // Called for every run; returns the result or throws.
    std::function<FFmpegResult(const QStringList &)> respond = [](const QStringList &) {
        return FFmpegResult{};
    };

    FFmpegResult run(const QStringList &arguments, const CancellationToken &) const override
    {
        {
            const std::lock_guard guard(m_lock);
            m_calls.append(arguments);
        }
        return respond(arguments);
    }

    QList<QStringList> calls() const
    {
        const std::lock_guard guard(m_lock);
        return m_calls;
    }

private:
    mutable std::mutex m_lock;
    mutable QList<QStringList> m_calls;
};

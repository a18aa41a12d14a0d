// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FFmpegError.h"
#include "engine/FFmpegRunning.h"

#include <QList>

#include <functional>
#include <mutex>
#include <optional>

// Stands in for ffmpeg: records every call and answers from a script.
class FakeFFmpegRunner final : public FFmpegRunning
{
public:
    struct Call
    {
        QStringList arguments;
        const CancellationToken *token = nullptr;
    };

    // Called for every run; returns the result or throws.
    std::function<FFmpegResult(const QStringList &)> respond = [](const QStringList &) {
        return FFmpegResult{};
    };

    FFmpegResult run(const QStringList &arguments,
                     const CancellationToken &cancellation) const override
    {
        {
            const std::lock_guard guard(m_lock);
            m_calls.append({arguments, &cancellation});
        }
        return respond(arguments);
    }

    QList<Call> calls() const
    {
        const std::lock_guard guard(m_lock);
        return m_calls;
    }

private:
    mutable std::mutex m_lock;
    mutable QList<Call> m_calls;
};

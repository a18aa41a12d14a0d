// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FFmpegResult.h"

#include <QByteArrayView>
#include <QStringList>

#include <functional>

class CancellationToken;

// The one way the engine starts ffmpeg. Services hold a runner through this
// interface so tests can stand in for the real program.
class FFmpegRunning
{
public:
    virtual ~FFmpegRunning() = default;

    // Runs ffmpeg once with exactly these arguments and blocks the calling
    // thread until the child has exited and both of its output streams are
    // drained. While it runs, a set token terminates the child; the result of
    // the terminated child still comes back normally.
    // Throws FFmpegError when there is no executable or it cannot be started.
    virtual FFmpegResult run(const QStringList &arguments,
                             const CancellationToken &cancellation) const = 0;

    // Each piece of standard output as it arrives, on the running thread.
    using OutputListener = std::function<void(QByteArrayView)>;
    // The same run, telling `onOutput` what ffmpeg writes to standard output
    // while it runs (its -progress report). A runner that cannot just runs.
    virtual FFmpegResult runListening(const QStringList &arguments,
                                      const CancellationToken &cancellation,
                                      const OutputListener &onOutput) const
    {
        Q_UNUSED(onOutput);
        return run(arguments, cancellation);
    }
};

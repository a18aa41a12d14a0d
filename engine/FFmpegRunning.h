// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FFmpegResult.h"

#include <QStringList>

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
};

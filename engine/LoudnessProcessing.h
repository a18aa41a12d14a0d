// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/OutputEncoding.h"
#include "model/AudioFileItem.h"
#include "model/ProcessingResult.h"
#include "model/ProcessingSettings.h"

#include <functional>

class CancellationToken;

class LoudnessProcessing
{
public:
    virtual ~LoudnessProcessing() = default;

    // Writes one item's output at `destination` (absolute, unique when the run
    // was planned and carrying the encoding's extension), through a hidden
    // file in the same folder that is moved into place only after a clean,
    // uncancelled run and never over anything: a name taken meanwhile gives
    // way to the next free numbered one, and the result's outputFileName says
    // which was written. Blocks the calling thread. Throws ProcessingError, or
    // the runner's FFmpegError unchanged.
    virtual ProcessingResult process(const AudioFileItem &item, const QString &destination,
                                     const OutputEncoding &encoding,
                                     const ProcessingSettings &settings,
                                     const CancellationToken &cancellation) const = 0;

    // How far the file being written has come, 0 to 1, told on the job's thread.
    using ProgressListener = std::function<void(double)>;
    // The same, telling `progress` as the output is written. A service that
    // cannot tell just processes.
    virtual ProcessingResult processReporting(const AudioFileItem &item, const QString &destination,
                                              const OutputEncoding &encoding,
                                              const ProcessingSettings &settings,
                                              const CancellationToken &cancellation,
                                              const ProgressListener &progress) const
    {
        Q_UNUSED(progress);
        return process(item, destination, encoding, settings, cancellation);
    }
};

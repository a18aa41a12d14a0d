// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/OutputEncoding.h"
#include "model/AudioFileItem.h"
#include "model/ProcessingResult.h"
#include "model/ProcessingSettings.h"

class CancellationToken;

class LoudnessProcessing
{
public:
    virtual ~LoudnessProcessing() = default;

    // Writes one item's output at `destination` (absolute, already unique and
    // carrying the encoding's extension), through a hidden temporary file in
    // the same folder that is moved into place only after a clean, uncancelled
    // run. Blocks the calling thread. Throws ProcessingError, or the runner's
    // FFmpegError unchanged.
    virtual ProcessingResult process(const AudioFileItem &item, const QString &destination,
                                     const OutputEncoding &encoding,
                                     const ProcessingSettings &settings,
                                     const CancellationToken &cancellation) const = 0;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/LoudnessMeasurement.h"

class CancellationToken;

class LoudnessAnalyzing
{
public:
    virtual ~LoudnessAnalyzing() = default;

    // Measures one file with loudnorm's first pass. Blocks the calling thread.
    // Throws LoudnessAnalysisError, or the runner's FFmpegError unchanged.
    // A cancelled run normally surfaces as LoudnessAnalysisError::FFmpegFailed;
    // the caller tells cancellation from failure by its own token.
    virtual LoudnessMeasurement analyze(const QString &filePath, double targetLUFS, double truePeak,
                                        const CancellationToken &cancellation) const = 0;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/LoudnessAnalyzing.h"

#include <QStringList>

#include <memory>

class FFmpegRunning;

class LoudnessAnalysisService final : public LoudnessAnalyzing
{
public:
    // How the first pass measures. Both print loudnorm's JSON.
    enum class Meter
    {
        // ebur128 at the source's own rate, true peak on a 192 kHz copy.
        NativeRate,
        // loudnorm's own first pass: everything at 192 kHz through its dynamic
        // path, about seven times the CPU. Kept for side-by-side benchmarks.
        Loudnorm192k,
    };

    explicit LoudnessAnalysisService(std::shared_ptr<const FFmpegRunning> runner,
                                     Meter meter = Meter::NativeRate);

    LoudnessMeasurement analyze(const QString &filePath, double targetLUFS, double truePeak,
                                const CancellationToken &cancellation) const override;

    // The measuring pass's ffmpeg arguments: decode, measure, discard.
    static QStringList arguments(const QString &filePath, double targetLUFS, double truePeak,
                                 Meter meter = Meter::NativeRate);

private:
    std::shared_ptr<const FFmpegRunning> m_runner;
    Meter m_meter;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/LoudnessAnalyzing.h"

#include <QStringList>

#include <memory>

class FFmpegRunning;

class LoudnessAnalysisService final : public LoudnessAnalyzing
{
public:
    explicit LoudnessAnalysisService(std::shared_ptr<const FFmpegRunning> runner);

    LoudnessMeasurement analyze(const QString &filePath, double targetLUFS, double truePeak,
                                const CancellationToken &cancellation) const override;

    // The measuring pass's ffmpeg arguments: decode, measure, discard.
    static QStringList arguments(const QString &filePath, double targetLUFS, double truePeak);

private:
    std::shared_ptr<const FFmpegRunning> m_runner;
};

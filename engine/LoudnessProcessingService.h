// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/LoudnessProcessing.h"

#include <QStringList>

#include <memory>

class FFmpegRunning;
class LoudnessAnalyzing;

// The second pass: one static gain (or plain conversion) and the encoding.
// Stateless; one instance serves every concurrent job.
class LoudnessProcessingService final : public LoudnessProcessing
{
public:
    LoudnessProcessingService(std::shared_ptr<const FFmpegRunning> runner,
                              std::shared_ptr<const LoudnessAnalyzing> analyzer);

    ProcessingResult process(const AudioFileItem &item, const QString &destination,
                             const OutputEncoding &encoding, const ProcessingSettings &settings,
                             const CancellationToken &cancellation) const override;

private:
    // Returns the path written, which is `destination` or, when that name
    // was taken meanwhile, the next free numbered one.
    QString renderAndMove(const QStringList &arguments, const QString &destination,
                          const CancellationToken &cancellation) const;

    std::shared_ptr<const FFmpegRunning> m_runner;
    std::shared_ptr<const LoudnessAnalyzing> m_analyzer;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/LoudnessProcessing.h"

#include <QStringList>

#include <functional>
#include <memory>

class FFmpegRunning;
class PartFile;
struct LoudnessMeasurement;
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
    ProcessingResult processReporting(const AudioFileItem &item, const QString &destination,
                                      const OutputEncoding &encoding,
                                      const ProcessingSettings &settings,
                                      const CancellationToken &cancellation,
                                      const ProgressListener &progress) const override;

private:
    // Runs ffmpeg into the hidden file, then `finish` on it (what ffmpeg
    // cannot write: chunks, markers); throws ProcessingError when either
    // fails or the run is cancelled.
    // With a listener and the source's duration, ffmpeg reports its position
    // and the listener hears how far the output has come.
    void render(const QStringList &arguments, const PartFile &part,
                const CancellationToken &cancellation,
                const std::function<bool(const QString &)> &finish,
                const ProgressListener &progress = {},
                std::optional<double> durationSeconds = std::nullopt) const;
    // The analysis pass, its failures as ProcessingError (a time-out as itself).
    LoudnessMeasurement measure(const QString &path, const ProcessingSettings &settings,
                                const CancellationToken &cancellation) const;

    std::shared_ptr<const FFmpegRunning> m_runner;
    std::shared_ptr<const LoudnessAnalyzing> m_analyzer;
};

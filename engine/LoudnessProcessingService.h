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
    // Prefix of the hidden file ffmpeg writes before it is moved into place.
    static constexpr QStringView temporaryPrefix = u".tbpart-";

    LoudnessProcessingService(std::shared_ptr<const FFmpegRunning> runner,
                              std::shared_ptr<const LoudnessAnalyzing> analyzer);

    ProcessingResult process(const AudioFileItem &item, const QString &destination,
                             const OutputEncoding &encoding, const ProcessingSettings &settings,
                             const CancellationToken &cancellation) const override;

    // ".tbpart-<UUID>-<name>" beside the destination, shortened where the
    // file system's 255-byte name limit demands it but keeping the extension.
    static QString temporaryPath(const QString &destination);

private:
    void renderAndMove(const QStringList &arguments, const QString &destination,
                       const CancellationToken &cancellation) const;

    std::shared_ptr<const FFmpegRunning> m_runner;
    std::shared_ptr<const LoudnessAnalyzing> m_analyzer;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnessAnalysisService.h"

#include "engine/AudioMetadata.h"
#include "engine/FFmpegRunning.h"
#include "engine/LoudnessAnalysisError.h"
#include "engine/LoudnormReport.h"
#include "model/NumberFormat.h"

#include <utility>

LoudnessAnalysisService::LoudnessAnalysisService(std::shared_ptr<const FFmpegRunning> runner,
                                                 Meter meter)
    : m_runner(std::move(runner))
    , m_meter(meter)
{}

QStringList LoudnessAnalysisService::arguments(const QString &filePath, double targetLUFS,
                                               double truePeak, Meter meter)
{
    // The ceiling does not change what is measured; loudnorm just insists on one.
    const QString filter =
        meter == Meter::NativeRate
            ? QString(
                  QStringLiteral("ebur128=peak=true:framelog=quiet:print_format=json:target_i=") +
                  NumberFormat::fixed(targetLUFS, 1))
            : QString(QStringLiteral("loudnorm=I=") + NumberFormat::fixed(targetLUFS, 1) +
                      QStringLiteral(":TP=") + NumberFormat::fixed(truePeak, 1) +
                      QStringLiteral(":print_format=json"));
    return {QStringLiteral("-hide_banner"), QStringLiteral("-nostats"), QStringLiteral("-i"),
            filePath,
            // Cover art is not decoded for nothing.
            QStringLiteral("-vn"), QStringLiteral("-af"), filter, QStringLiteral("-f"),
            QStringLiteral("null"), QStringLiteral("-")};
}

LoudnessMeasurement LoudnessAnalysisService::analyze(const QString &filePath, double targetLUFS,
                                                     double truePeak,
                                                     const CancellationToken &cancellation) const
{
    if (AudioMetadata::isSomethingOtherThanAFile(filePath))
        throw LoudnessAnalysisError::notARegularFile(filePath);
    const FFmpegResult result =
        m_runner->run(arguments(filePath, targetLUFS, truePeak, m_meter), cancellation);
    // A complete block counts even when ffmpeg then exits non-zero.
    if (const auto measurement = LoudnormReport::parse(result.standardError))
        return *measurement;
    if (result.exitCode != 0)
        throw LoudnessAnalysisError::ffmpegFailed(result.exitCode, result.standardError);
    throw LoudnessAnalysisError::parseFailed(result.standardError);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnessProcessingService.h"

#include "engine/CancellationToken.h"
#include "engine/FFmpegRunning.h"
#include "engine/GainFilter.h"
#include "engine/LoudnessAnalysisError.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/NormalizationPlan.h"
#include "engine/NumberFormat.h"
#include "engine/ProcessingError.h"
#include "engine/SystemError.h"
#include "model/AudioMetadata.h"
#include "model/StandardPath.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <unistd.h>
#include <utility>

namespace {

std::optional<double> finiteOrAbsent(double value)
{
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

QString fileName(const QString &path)
{
    return QFileInfo(path).fileName();
}

int outputSampleRate(const ProcessingSettings &settings, const QString &source)
{
    if (const auto rate = SampleRateModes::fixedRate(settings.sampleRateMode))
        return *rate;
    return AudioMetadata::sampleRate(source).value_or(SampleRateModes::fallbackRate);
}

// Cover art rides along unchanged where the container can hold it; elsewhere
// it is dropped, since this build has no encoder to convert it with.
QStringList pictureArguments(const OutputEncoding &encoding)
{
    const QString extension = encoding.fileExtension.toLower();
    if (extension == u"mp3" || extension == u"m4a")
        return {QStringLiteral("-c:v"), QStringLiteral("copy")};
    return {QStringLiteral("-vn")};
}

QStringList commandLine(const QString &source, const QString &filter, int sampleRate,
                        const OutputEncoding &encoding)
{
    QStringList arguments{QStringLiteral("-y"), QStringLiteral("-hide_banner"),
                          QStringLiteral("-nostats"), QStringLiteral("-i"), source};
    if (!filter.isEmpty())
        arguments << QStringLiteral("-af") << filter;
    arguments << QStringLiteral("-ar") << QString::number(sampleRate);
    arguments << encoding.codecArguments << pictureArguments(encoding);
    return arguments;
}

QString systemReason(int errorNumber, const QString &path)
{
    return systemErrorText(errorNumber) + QStringLiteral(": ") + path;
}

void createParentDirectory(const QString &destination)
{
    const QString folder = QFileInfo(destination).path();
    std::error_code error;
    std::filesystem::create_directories(
        std::filesystem::path(QFile::encodeName(folder).toStdString()), error);
    if (error)
        throw ProcessingError::writeFailed(systemReason(error.value(), folder));
}

void removeQuietly(const QString &path)
{
    ::unlink(QFile::encodeName(path).constData());
}

QString describeAnyError(const std::exception &error)
{
    if (const auto *engineError = dynamic_cast<const EngineError *>(&error))
        return engineError->describe();
    return QString::fromUtf8(error.what());
}

} // namespace

LoudnessProcessingService::LoudnessProcessingService(
    std::shared_ptr<const FFmpegRunning> runner, std::shared_ptr<const LoudnessAnalyzing> analyzer)
    : m_runner(std::move(runner))
    , m_analyzer(std::move(analyzer))
{}

QString LoudnessProcessingService::temporaryPath(const QString &destination)
{
    const QFileInfo info(destination);
    const QString prefix = temporaryPrefix.toString() +
                           QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() + u'-';
    QString name = info.fileName();
    constexpr qsizetype nameLimit = 255;
    if (QFile::encodeName(prefix + name).size() > nameLimit) {
        const QString suffix = info.suffix().isEmpty() ? QString() : u'.' + info.suffix();
        QString base = name.chopped(suffix.size());
        while (!base.isEmpty() && QFile::encodeName(prefix + base + suffix).size() > nameLimit)
            base.chop(base.size() >= 2 && base.at(base.size() - 1).isLowSurrogate() ? 2 : 1);
        name = base + suffix;
    }
    return info.path() + u'/' + prefix + name;
}

void LoudnessProcessingService::renderAndMove(const QStringList &arguments,
                                              const QString &destination,
                                              const CancellationToken &cancellation) const
{
    const QString temporary = temporaryPath(destination);
    const FFmpegResult result = m_runner->run(QStringList(arguments) << temporary, cancellation);
    // Checked first: a run stopped on purpose may still have exited cleanly.
    if (cancellation.isCancelled()) {
        removeQuietly(temporary);
        throw ProcessingError::cancelled();
    }
    if (result.exitCode != 0) {
        removeQuietly(temporary);
        throw ProcessingError::ffmpegFailed(result.exitCode, result.standardError);
    }
    // rename() replaces an existing file in one step, so the old output is
    // never gone before the new one is in place, and a folder that happens to
    // carry the destination's name is refused rather than removed.
    if (std::rename(QFile::encodeName(temporary).constData(),
                    QFile::encodeName(destination).constData()) != 0) {
        const int error = errno;
        removeQuietly(temporary);
        throw ProcessingError::writeFailed(systemReason(error, destination));
    }
}

ProcessingResult LoudnessProcessingService::process(const AudioFileItem &item,
                                                    const QString &destination,
                                                    const OutputEncoding &encoding,
                                                    const ProcessingSettings &settings,
                                                    const CancellationToken &cancellation) const
{
    if (standardizedPath(destination) == standardizedPath(item.sourceURL))
        throw ProcessingError::destinationEqualsSource();
    // A source replaced by a pipe since it was imported would hold ffmpeg
    // (and this job) until someone wrote to it.
    if (AudioMetadata::isSomethingOtherThanAFile(item.sourceURL))
        throw ProcessingError::analysisFailed(
            LoudnessAnalysisError::notARegularFile(item.sourceURL).describe());

    ProcessingResult result;
    result.sourceFileName = fileName(item.sourceURL);
    result.outputFileName = fileName(destination);
    result.outcome = ProcessingOutcome::Success;

    if (!settings.normalizeLoudness) {
        createParentDirectory(destination);
        renderAndMove(
            commandLine(item.sourceURL, {}, outputSampleRate(settings, item.sourceURL), encoding),
            destination, cancellation);
        return result;
    }

    const double target = settings.effectiveTargetLUFS();
    LoudnessMeasurement measurement;
    if (item.measurement) {
        measurement = *item.measurement;
    } else {
        try {
            measurement =
                m_analyzer->analyze(item.sourceURL, target, settings.truePeakCeiling, cancellation);
        } catch (const std::exception &error) {
            throw ProcessingError::analysisFailed(describeAnyError(error));
        }
    }
    if (cancellation.isCancelled())
        throw ProcessingError::cancelled();

    const NormalizationPlan plan =
        NormalizationPlan::compute(measurement, target, settings.truePeakCeiling);
    createParentDirectory(destination);
    const GainFilter filter = GainFilter::choose(measurement, plan, settings.truePeakCeiling);
    renderAndMove(commandLine(item.sourceURL, filter.text,
                              outputSampleRate(settings, item.sourceURL), encoding),
                  destination, cancellation);

    result.originalLUFS = finiteOrAbsent(measurement.inputI);
    result.finalLUFS = finiteOrAbsent(plan.expectedLUFS);
    result.appliedGain = plan.gain;
    result.truePeak = finiteOrAbsent(plan.expectedTruePeak);
    if (plan.isPeakLimited) {
        result.outcome = ProcessingOutcome::PeakLimited;
        // The figure is the loudness the item came in with (0 when it was
        // measured only now), not the target.
        const double stored = item.measurement ? item.measurement->inputI : 0.0;
        result.warningMessage =
            QStringLiteral("Target ") + NumberFormat::fixed(stored, 2) +
            QStringLiteral(" \u2192 could not reach target without exceeding the true peak "
                           "ceiling. Normalized to the highest safe level.");
    }
    return result;
}

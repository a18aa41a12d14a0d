// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnessProcessingService.h"

#include "engine/CancellationToken.h"
#include "engine/FFmpegError.h"
#include "engine/FFmpegRunning.h"
#include "engine/GainFilter.h"
#include "engine/LoudnessAnalysisError.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/NormalizationPlan.h"
#include "engine/NumberFormat.h"
#include "engine/PartFile.h"
#include "engine/ProcessingError.h"
#include "engine/SystemError.h"
#include "model/AudioMetadata.h"
#include "model/FileStamp.h"
#include "model/StandardPath.h"

#include <QFileInfo>

#include <cerrno>
#include <cmath>
#include <fcntl.h>
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

void createParentDirectory(const QString &destination)
{
    const QString folder = destination.left(destination.lastIndexOf(u'/'));
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(encodedPath(folder).toStdString()),
                                        error);
    if (error)
        throw ProcessingError::writeFailed(systemErrorAt(error.value(), folder));
}

// Names what is wrong with a source before ffmpeg would only call it damaged.
void checkSourceReadable(const QString &source)
{
    const int fd = ::open(encodedPath(source).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd >= 0) {
        ::close(fd);
        return;
    }
    if (errno == ENOENT || errno == ENOTDIR)
        throw ProcessingError::sourceMissing(displayedPath(source));
    throw ProcessingError::sourceUnreadable(systemErrorAt(errno, source));
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

QString LoudnessProcessingService::renderAndMove(const QStringList &arguments,
                                                 const QString &destination,
                                                 const CancellationToken &cancellation) const
{
    PartFile part(destination);
    const FFmpegResult result = m_runner->run(QStringList(arguments) << part.path(), cancellation);
    // Checked first: a run stopped on purpose may still have exited cleanly.
    if (cancellation.isCancelled())
        throw ProcessingError::cancelled();
    if (result.exitCode != 0)
        throw ProcessingError::ffmpegFailed(result.exitCode, result.standardError);
    return part.moveIntoPlace();
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

    checkSourceReadable(item.sourceURL);

    ProcessingResult result;
    result.sourceFileName = fileName(item.sourceURL);
    result.outcome = ProcessingOutcome::Success;

    if (!settings.normalizeLoudness) {
        createParentDirectory(destination);
        result.outputFileName = fileName(renderAndMove(
            commandLine(item.sourceURL, {}, outputSampleRate(settings, item.sourceURL), encoding),
            destination, cancellation));
        return result;
    }

    const double target = settings.effectiveTargetLUFS();
    LoudnessMeasurement measurement;
    // A stored measurement is used only while the file is still the one that
    // was measured: one edited or replaced since is measured again.
    if (item.measurement &&
        (!item.measuredStamp || FileStamp::of(item.sourceURL) == item.measuredStamp)) {
        measurement = *item.measurement;
    } else {
        try {
            measurement =
                m_analyzer->analyze(item.sourceURL, target, settings.truePeakCeiling, cancellation);
        } catch (const FFmpegError &error) {
            if (error.kind() == FFmpegError::Kind::TimedOut)
                throw;
            throw ProcessingError::analysisFailed(error.describe());
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
    result.outputFileName =
        fileName(renderAndMove(commandLine(item.sourceURL, filter.text,
                                           outputSampleRate(settings, item.sourceURL), encoding),
                               destination, cancellation));

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

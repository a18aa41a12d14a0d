// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnessProcessingService.h"

#include "engine/AudioMetadata.h"
#include "engine/BuildInfo.h"
#include "engine/CancellationToken.h"
#include "engine/FFmpegError.h"
#include "engine/FFmpegProgress.h"
#include "engine/FFmpegRunning.h"
#include "engine/GainFilter.h"
#include "engine/LoudnessAnalysisError.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/NormalizationPlan.h"
#include "engine/OutputShape.h"
#include "engine/PartFile.h"
#include "engine/ProcessingError.h"
#include "engine/SystemError.h"
#include "engine/WavChunks.h"
#include "localization/L.h"
#include "model/FileStamp.h"
#include "model/NumberFormat.h"
#include "model/StandardPath.h"

#include <QFileInfo>

#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <filesystem>
#include <functional>
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

// What the container declares; a stream it does not describe is taken at the
// fallback rate with its channels left to ffmpeg.
AudioStreamFacts sourceFacts(const QString &source)
{
    return AudioMetadata::streamFacts(source).value_or(
        AudioStreamFacts{SampleRateModes::fallbackRate, 0, false, 0});
}

// How far a written file may miss its planned loudness before it is written again.
constexpr double loudnessTolerance = 0.1;
// Kept below the ceiling on a second rendering after the first overshot it:
// an encoder does not land on the same peak twice.
constexpr double peakMargin = 0.2;
// Written files measured off the plan are written again at most this often.
constexpr int maxCorrections = 2;

// Cover art rides along unchanged where the container can hold it; elsewhere
// it is dropped, since this build has no encoder to convert it with.
QStringList pictureArguments(const OutputEncoding &encoding)
{
    const QString extension = encoding.fileExtension.toLower();
    if (extension == u"mp3" || extension == u"m4a")
        return {QStringLiteral("-c:v"), QStringLiteral("copy")};
    return {QStringLiteral("-vn")};
}

QStringList commandLine(const QString &source, const QString &filter, const OutputShape &shape,
                        const OutputEncoding &encoding)
{
    QStringList arguments{QStringLiteral("-y"), QStringLiteral("-hide_banner"),
                          QStringLiteral("-nostats"), QStringLiteral("-i"), source};
    if (!filter.isEmpty())
        arguments << QStringLiteral("-af") << filter;
    arguments << shape.arguments();
    arguments << encoding.codecArguments << pictureArguments(encoding);
    return arguments;
}

QStringList copyCommandLine(const QString &source, const OutputEncoding &encoding)
{
    QStringList arguments{QStringLiteral("-y"),
                          QStringLiteral("-hide_banner"),
                          QStringLiteral("-nostats"),
                          QStringLiteral("-i"),
                          source,
                          QStringLiteral("-c:a"),
                          QStringLiteral("copy")};
    if (encoding.fileExtension.toLower() == u"wav")
        arguments << QStringLiteral("-rf64") << QStringLiteral("auto");
    return arguments << pictureArguments(encoding);
}

QString volumeFilter(double gain)
{
    return QStringLiteral("volume=") + NumberFormat::fixed(gain, 2) +
           QStringLiteral("dB:precision=double");
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

// Tags a new gain makes wrong: players would apply them on top of it.
const QStringList &gainTags()
{
    static const QStringList tags{QStringLiteral("REPLAYGAIN_TRACK_GAIN"),
                                  QStringLiteral("REPLAYGAIN_TRACK_PEAK"),
                                  QStringLiteral("REPLAYGAIN_ALBUM_GAIN"),
                                  QStringLiteral("REPLAYGAIN_ALBUM_PEAK"),
                                  QStringLiteral("R128_TRACK_GAIN"),
                                  QStringLiteral("R128_ALBUM_GAIN"),
                                  QStringLiteral("iTunNORM")};
    return tags;
}

// What a written file keeps of its source beyond the audio.
struct Keeping
{
    // ffmpeg's options: bext fields, tags removed, AIFF tags in an ID3 chunk.
    QStringList arguments;
    // Appended to the written file: iXML, markers and loops to a WAV, markers to AIFF or CAF.
    std::function<bool(const QString &)> finish = [](const QString &) { return true; };
    // What the output format cannot carry.
    QStringList notKept;
};

// "A=PCM,F=44100,W=24,M=stereo,T=Tonbrook 0.2; -23.0 LUFS", as coding
// histories are written (EBU R 98).
QString historyLine(const OutputShape &shape, const OutputEncoding &encoding,
                    const ProcessingSettings &settings)
{
    const int bits =
        encoding.family == OutputEncoding::Family::FloatPcm ? 32 : encoding.integerBits();
    const QString mode = shape.channels == 1   ? QStringLiteral("mono")
                         : shape.channels == 2 ? QStringLiteral("stereo")
                                               : QStringLiteral("multichannel");
    return QStringLiteral("A=PCM,F=%1,W=%2,M=%3,T=Tonbrook %4; %5")
        .arg(shape.sampleRate)
        .arg(bits)
        .arg(mode, QLatin1StringView(BuildInfo::version),
             settings.normalizeLoudness
                 ? NumberFormat::fixed(settings.effectiveTargetLUFS(), 1) + QStringLiteral(" LUFS")
                 : QStringLiteral("converted"));
}

Keeping keeping(const QString &source, const AudioStreamFacts &facts,
                const OutputEncoding &encoding, const OutputShape &shape,
                const ProcessingSettings &settings, bool gainApplied)
{
    Keeping keep;
    const QString extension = encoding.fileExtension.toLower();
    if (const auto wav = WavChunks::read(source)) {
        if (wav->isDamaged()) {
            keep.notKept = {QStringLiteral("damaged")};
        } else if (extension == u"wav") {
            if (const auto bext = wav->bext())
                keep.arguments << WavChunks::bextArguments(*bext, facts.sampleRate,
                                                           shape.sampleRate,
                                                           historyLine(shape, encoding, settings));
            keep.finish = [chunks = wav->carried(facts.sampleRate, shape.sampleRate)](
                              const QString &path) { return WavChunks::append(path, chunks); };
        } else {
            keep.notKept = wav->kinds();
            // AIFF and CAF have markers of their own.
            const auto markers = wav->markers(facts.sampleRate, shape.sampleRate);
            const bool aiff = extension == u"aiff" || extension == u"aif";
            if ((aiff || extension == u"caf") && !markers.isEmpty()) {
                keep.notKept.removeAll(QStringLiteral("markers"));
                keep.finish = [markers, aiff](const QString &path) {
                    return aiff ? WavChunks::appendAiffMarkers(path, markers)
                                : WavChunks::appendCafMarkers(path, markers);
                };
            }
        }
    }
    if (extension == u"aiff" || extension == u"aif")
        keep.arguments << QStringLiteral("-write_id3v2") << QStringLiteral("1");
    if (gainApplied) {
        for (const QString &tag : gainTags())
            keep.arguments << QStringLiteral("-metadata") << tag + u'=';
        // The LAME header's own copy of the source's ReplayGain (our patch 0003).
        if (encoding.family == OutputEncoding::Family::Mp3)
            keep.arguments << QStringLiteral("-write_replaygain") << QStringLiteral("0");
    }
    return keep;
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

void LoudnessProcessingService::render(const QStringList &arguments, const PartFile &part,
                                       const CancellationToken &cancellation,
                                       const std::function<bool(const QString &)> &finish,
                                       const ProgressListener &progress,
                                       std::optional<double> durationSeconds) const
{
    FFmpegResult result;
    if (progress && durationSeconds && *durationSeconds > 0) {
        FFmpegProgress report;
        const double total = *durationSeconds * 1e6;
        result = m_runner->runListening(
            QStringList{QStringLiteral("-progress"), QStringLiteral("pipe:1")} << arguments
                                                                               << part.path(),
            cancellation, [&](QByteArrayView piece) {
                if (const auto written = report.feed(piece))
                    progress(std::min(1.0, static_cast<double>(*written) / total));
            });
    } else {
        result = m_runner->run(QStringList(arguments) << part.path(), cancellation);
    }
    // Checked first: a run stopped on purpose may still have exited cleanly.
    if (cancellation.isCancelled())
        throw ProcessingError::cancelled();
    if (result.exitCode != 0)
        throw ProcessingError::ffmpegFailed(result.exitCode, result.standardError);
    if (!finish(part.path()))
        throw ProcessingError::writeFailed(systemErrorAt(EIO, part.path()));
}

LoudnessMeasurement LoudnessProcessingService::measure(const QString &path,
                                                       const ProcessingSettings &settings,
                                                       const CancellationToken &cancellation) const
{
    LoudnessMeasurement measurement;
    try {
        measurement = m_analyzer->analyze(path, settings.effectiveTargetLUFS(),
                                          settings.truePeakCeiling, cancellation);
    } catch (const FFmpegError &error) {
        if (error.kind() == FFmpegError::Kind::TimedOut)
            throw;
        throw ProcessingError::analysisFailed(error.describe());
    } catch (const std::exception &error) {
        throw ProcessingError::analysisFailed(describeAnyError(error));
    }
    if (cancellation.isCancelled())
        throw ProcessingError::cancelled();
    return measurement;
}

ProcessingResult LoudnessProcessingService::process(const AudioFileItem &item,
                                                    const QString &destination,
                                                    const OutputEncoding &encoding,
                                                    const ProcessingSettings &settings,
                                                    const CancellationToken &cancellation) const
{
    return processReporting(item, destination, encoding, settings, cancellation, {});
}

ProcessingResult LoudnessProcessingService::processReporting(const AudioFileItem &item,
                                                             const QString &destination,
                                                             const OutputEncoding &requested,
                                                             const ProcessingSettings &settings,
                                                             const CancellationToken &cancellation,
                                                             const ProgressListener &progress) const
{
    if (standardizedPath(destination) == standardizedPath(item.sourcePath))
        throw ProcessingError::destinationEqualsSource();
    // A source replaced by a pipe since it was imported would hold ffmpeg
    // (and this job) until someone wrote to it.
    if (AudioMetadata::isSomethingOtherThanAFile(item.sourcePath))
        throw ProcessingError::analysisFailed(
            LoudnessAnalysisError::notARegularFile(item.sourcePath).describe());

    checkSourceReadable(item.sourcePath);
    const AudioStreamFacts source = sourceFacts(item.sourcePath);
    const OutputEncoding encoding = requested.forSource(source.codec, source.bits);
    const std::optional<double> duration =
        progress ? AudioMetadata::durationSeconds(item.sourcePath) : std::nullopt;

    ProcessingResult result;
    result.sourceFileName = fileName(item.sourcePath);
    result.outcome = ProcessingOutcome::Success;

    if (!settings.normalizeLoudness) {
        const OutputShape shape =
            OutputShape::decide(source, encoding, settings.sampleRateMode, false);
        const Keeping keep = keeping(item.sourcePath, source, encoding, shape, settings, false);
        result.changes = shape.changes;
        result.notKept = keep.notKept;
        // Floating-point samples may go past full scale, which integer PCM
        // cannot hold: find out before, so that the clipping is said.
        std::optional<double> overs;
        if (source.isFloat && encoding.family == OutputEncoding::Family::IntegerPcm) {
            const double peak = measure(item.sourcePath, settings, cancellation).inputTP;
            if (std::isfinite(peak) && peak > 0)
                overs = peak;
        }
        // Nothing changes the audio: it is copied, not encoded again.
        const bool copy = encoding.copies(source.codec) && shape.sampleRate == source.sampleRate &&
                          !shape.downmixed;
        createParentDirectory(destination);
        PartFile part(destination);
        render((copy ? copyCommandLine(item.sourcePath, encoding)
                     : commandLine(item.sourcePath, {}, shape, encoding))
                   << keep.arguments,
               part, cancellation, keep.finish, progress, duration);
        result.outputFileName = fileName(part.moveIntoPlace());
        if (overs) {
            result.outcome = ProcessingOutcome::Clipped;
            result.warningMessage = L::text(L::ClippedWarning, NumberFormat::signedFixed(*overs, 1),
                                            L::bitDepthLabel(settings.bitDepth));
        }
        return result;
    }

    const double target = settings.effectiveTargetLUFS();
    // A stored measurement is used only while the file is still the one that
    // was measured: one edited or replaced since is measured again.
    const bool storedStillTrue =
        item.measurement &&
        (!item.measuredStamp || AudioMetadata::stamp(item.sourcePath) == item.measuredStamp);
    const LoudnessMeasurement measurement =
        storedStillTrue ? *item.measurement : measure(item.sourcePath, settings, cancellation);

    const NormalizationPlan plan =
        NormalizationPlan::compute(measurement, target, settings.truePeakCeiling);
    const GainFilter filter = GainFilter::choose(measurement, plan, settings.truePeakCeiling);
    const OutputShape shape = OutputShape::decide(source, encoding, settings.sampleRateMode,
                                                  filter.kind != GainFilter::Kind::None);
    const Keeping keep = keeping(item.sourcePath, source, encoding, shape, settings,
                                 filter.kind != GainFilter::Kind::None);
    result.changes = shape.changes;
    result.notKept = keep.notKept;
    result.originalLUFS = finiteOrAbsent(measurement.inputI);
    result.finalLUFS = finiteOrAbsent(plan.expectedLUFS);
    result.appliedGain = plan.gain;
    result.truePeak = finiteOrAbsent(plan.expectedTruePeak);
    bool limited = plan.isPeakLimited;

    createParentDirectory(destination);
    auto part = std::make_unique<PartFile>(destination);
    render(commandLine(item.sourcePath, filter.text, shape, encoding) << keep.arguments, *part,
           cancellation, keep.finish, progress, duration);

    // Another rate or layout, or a lossy encoder, makes the prediction an
    // estimate: the written file is measured and, where it misses the plan or
    // passes the ceiling, written again with the gain corrected by what it
    // missed. An encoder is not quite linear in level (LAME keeps or drops
    // detail by absolute thresholds), so a second correction may follow, scaled
    // by how the first one moved the loudness.
    if (filter.kind != GainFilter::Kind::None && shape.differsFrom(source, encoding)) {
        const double ceiling = settings.truePeakCeiling;
        LoudnessMeasurement written = measure(part->path(), settings, cancellation);
        double gain = plan.gain;
        std::optional<std::pair<double, double>> before; // gain, loudness
        for (int correction = 0; correction < maxCorrections; ++correction) {
            const bool missed = std::abs(written.inputI - plan.expectedLUFS) > loudnessTolerance;
            if (!missed && written.inputTP <= ceiling)
                break;
            double step = plan.expectedLUFS - written.inputI;
            if (before && gain != before->first) {
                const double slope = (written.inputI - before->second) / (gain - before->first);
                if (slope > 0.5 && slope < 2)
                    step /= slope;
            }
            const double peakAfter = written.inputTP + step;
            if (peakAfter > ceiling) {
                const double cut = peakAfter - ceiling + peakMargin;
                step -= cut;
                limited = limited || cut > loudnessTolerance;
            }
            // As written on the command line.
            const double next = std::round((gain + step) * 100) / 100;
            if (next == gain)
                break;
            before = std::pair(gain, written.inputI);
            gain = next;
            auto again = std::make_unique<PartFile>(destination);
            render(commandLine(item.sourcePath, volumeFilter(gain), shape, encoding)
                       << keep.arguments,
                   *again, cancellation, keep.finish);
            written = measure(again->path(), settings, cancellation);
            part = std::move(again);
        }
        result.finalLUFS = finiteOrAbsent(written.inputI);
        result.truePeak = finiteOrAbsent(written.inputTP);
        result.appliedGain = gain;
        result.measured = true;
        limited = limited || written.inputTP > ceiling;
    }
    result.outputFileName = fileName(part->moveIntoPlace());

    if (limited) {
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

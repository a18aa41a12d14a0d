// SPDX-License-Identifier: GPL-3.0-or-later
//
// Both passes on real audio through the bundled ffmpeg; every output read back
// with libavformat and measured by an independent meter (libebur128).
//
// The matrix: every source format x 44.1/48/96 kHz x mono/stereo (5.1 in WAV
// and M4A), and signals chosen for what they exercise, each written normalised
// from the stored measurement, normalised measuring in the pass and (the plain
// ones) converted, consecutive rows stepping through output format x bit depth
// x rate mode. Then what a file holds besides its loudness: peaks above full
// scale, dither, progress, and what professional files carry (bext, iXML,
// markers and loops, tags, ALAC, stream copy), read back by walks of our own.
//
// TONBROOK_MATRIX_SHARD=k/n runs every n-th input from k; cancelling runs in
// the first shard, the file checks in the second.
#include "IndependentMeter.h"
#include "MediaProbe.h"
#include "RecordingRunner.h"
#include "RunChecks.h"
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/ProcessingError.h"
#include "model/LoudnessPreset.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <cmath>
#include <functional>
#include <future>
#include <map>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Segment = TestAudio::Segment;

namespace {

constexpr double target = -14.0; // the streaming preset
constexpr double ceiling = -1.0; // the default
constexpr double minusInfinity = -std::numeric_limits<double>::infinity();

enum class Role
{
    Plain,
    WideRange,
    SteadyTone,
    MustBeLimited,
    Silent,
    TooShort,
    Clipped,
    Cover,
};

enum class Pass
{
    Stored,
    Measured,
    Converted,
};

struct Input
{
    QString name;
    int rate;
    int channels;
    std::vector<Segment> signal;
    Role role = Role::Plain;
};

std::vector<Input> inputs()
{
    // Noise, then a tone above 22 kHz where the rate allows, so that a lower
    // output rate loses real energy; within a few LU of each other, as
    // programme material is.
    const auto programme = [](int rate) {
        return std::vector{Segment::noise(-20, 3),
                           Segment::sine(-17, 2, rate > 60000 ? 30000 : 3000)};
    };
    std::vector<Input> list;
    for (const QString &extension : {u"wav"_s, u"aiff"_s, u"aif"_s, u"caf"_s, u"mp3"_s, u"m4a"_s})
        for (int rate : {44100, 48000, 96000})
            for (int channels : {1, 2, 6})
                if (extension == u"mp3"
                        ? rate <= 48000 && channels <= 2
                        : channels <= 2 || extension == u"wav" || extension == u"m4a")
                    list.push_back({u"%1 Hz %2 ch.%3"_s.arg(rate).arg(channels).arg(extension),
                                    rate, channels, programme(rate)});
    std::vector<Segment> kicks;
    for (int i = 0; i < 20; ++i)
        kicks.insert(kicks.end(), {Segment::sine(-1, 0.005), Segment::noise(-50, 0.495)});
    const auto noise = Segment::noise;
    list.push_back({u"ambience.wav"_s,
                    48000,
                    2,
                    {noise(-45, 6), noise(-25, 6), noise(-40, 6), noise(-22, 6), noise(-35, 6)},
                    Role::WideRange});
    list.push_back({u"tone.wav"_s, 44100, 2, {Segment::sine(-18, 10)}, Role::SteadyTone});
    list.push_back({u"kicks.wav"_s, 48000, 2, kicks, Role::MustBeLimited});
    list.push_back({u"silence.wav"_s, 48000, 2, {Segment::silence(5)}, Role::Silent});
    list.push_back({u"blip.wav"_s, 48000, 2, {Segment::sine(-20, 0.2)}, Role::TooShort});
    list.push_back({u"square.wav"_s, 44100, 2, {Segment::square(0, 6)}, Role::Clipped});
    list.push_back({u"cover.mp3"_s, 44100, 2, programme(44100), Role::Cover});
    list.push_back({u"cover.m4a"_s, 48000, 2, programme(48000), Role::Cover});
    return list;
}

// Consecutive rows step through every output format x bit depth x rate mode.
ProcessingSettings settingsFor(const Input &input, int index, Pass pass)
{
    const int c = index + static_cast<int>(pass);
    ProcessingSettings settings{.normalizeLoudness = pass != Pass::Converted,
                                .sampleRateMode = SampleRateModes::all[c % 3],
                                .bitDepth = OutputBitDepths::all[c / 15 % 3],
                                .outputFormatMode = OutputFormatModes::all[c % 5]};
    // Cover art: kept in its own container, carried from M4A into MP3, dropped for PCM.
    if (input.role == Role::Cover)
        settings.outputFormatMode = pass == Pass::Stored           ? OutputFormatMode::KeepOriginal
                                    : input.name.endsWith(u".m4a") ? OutputFormatMode::Mp3
                                                                   : OutputFormatMode::Caf;
    return settings;
}

QString described(const MediaProbe &probe)
{
    return u"%1 %2, %3 bits, %4 Hz, %5 channels, %6 pictures, %7 other video"_s
        .arg(probe.containerName, probe.audioCodec)
        .arg(probe.bitsPerSample)
        .arg(probe.sampleRate)
        .arg(probe.channels)
        .arg(probe.attachedPictures)
        .arg(probe.otherVideoStreams);
}

// Equal within the tolerance, or the same infinity.
bool near(double a, double b, double tolerance)
{
    return a == b || std::abs(a - b) <= tolerance;
}

struct Source
{
    QString path;
    LoudnessMeasurement measured; // by the first pass
    IndependentMeter meter;
    QByteArray digest;
};

template<typename T>
QByteArray littleEndian(T value)
{
    QByteArray bytes(sizeof(T), '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

template<typename T>
QByteArray bigEndian(T value)
{
    QByteArray bytes(sizeof(T), '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray chunk(const QByteArray &id, const QByteArray &body)
{
    return id + littleEndian(quint32(body.size())) + body + QByteArray(body.size() & 1, '\0');
}

// Markers at 1 s ("Thunder") and 2.5 s (a region of 0.5 s), a loop from 2 s to 3 s.
QByteArray cueChunk(int rate)
{
    QByteArray body = littleEndian(2u);
    for (const quint32 id : {1u, 2u}) {
        const auto at = quint32(id == 1 ? rate : rate * 5 / 2);
        body += littleEndian(id) + littleEndian(at) + "data" + littleEndian(0u) + littleEndian(0u) +
                littleEndian(at);
    }
    return chunk("cue ", body);
}

QByteArray adtlChunk(int rate)
{
    return chunk("LIST", "adtl" + chunk("labl", littleEndian(1u) + QByteArray("Thunder", 8)) +
                             chunk("ltxt", littleEndian(2u) + littleEndian(quint32(rate / 2)) +
                                               "rgn " + QByteArray(8, '\0')));
}

QByteArray smplChunk(int rate)
{
    QByteArray body;
    for (const auto value : {0u, 0u, quint32(std::llround(1e9 / rate)), 60u, 0u, 0u, 0u, 1u, 0u, 1u,
                             0u, quint32(2 * rate), quint32(3 * rate), 0u, 0u})
        body += littleEndian(value);
    return chunk("smpl", body);
}

const QByteArray ixml = "<?xml version=\"1.0\"?><BWFXML><SCENE>4</SCENE><TAKE>2</TAKE></BWFXML>";

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAll(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(bytes) == bytes.size();
}

// Every chunk of a RIFF WAVE by id, the audio included.
QMultiMap<QByteArray, QByteArray> chunksOf(const QByteArray &wav)
{
    QMultiMap<QByteArray, QByteArray> chunks;
    for (qsizetype at = 12; at + 8 <= wav.size();) {
        const quint32 size = qFromLittleEndian<quint32>(wav.constData() + at + 4);
        chunks.insert(wav.mid(at, 4), wav.mid(at + 8, size));
        at += 8 + size + (size & 1);
    }
    return chunks;
}

bool runFFmpeg(const QStringList &arguments)
{
    return QProcess::execute(TestEnvironment::ffmpegPath(),
                             QStringList{u"-v"_s, u"error"_s, u"-y"_s} + arguments) == 0;
}

// What ffmpeg says a file holds.
QString ffmpegSays(const QString &path)
{
    QProcess ffmpeg;
    ffmpeg.start(TestEnvironment::ffmpegPath(), {u"-hide_banner"_s, u"-i"_s, path});
    ffmpeg.waitForFinished(30000);
    return QString::fromUtf8(ffmpeg.readAllStandardError());
}

} // namespace

class ProcessingMatrixTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<RecordingRunner> m_runner =
        std::make_shared<RecordingRunner>(TestEnvironment::ffmpegPath());
    std::shared_ptr<LoudnessAnalysisService> m_analyzer = std::make_shared<LoudnessAnalysisService>(
        std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath()));
    LoudnessProcessingService m_service{m_runner, m_analyzer};
    // The recording runner does not pass ffmpeg's progress report on.
    LoudnessProcessingService m_reporting{
        std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath()), m_analyzer};
    std::vector<Input> m_inputs = inputs();
    std::map<int, Source> m_sources;
    QString m_written;

    QString at(const QString &name) const { return m_dir.filePath(name); }

    // Writes the source as out/<name> at -14 LUFS where it normalises;
    // m_written is where it went.
    ProcessingResult process(const QString &source, const QString &name,
                             ProcessingSettings settings,
                             const std::optional<LoudnessMeasurement> &stored = {},
                             const std::function<void(double)> &progress = {})
    {
        settings.selectedPreset = *LoudnessPreset::builtIn(u"streaming");
        const AudioFileItem item{.sourcePath = source,
                                 .sourceFormat = *SourceAudioFormats::fromFileName(source),
                                 .measurement = stored};
        const OutputEncoding encoding =
            OutputEncoding::resolve(item.sourceFormat, settings.outputFormatMode, settings.bitDepth,
                                    QFileInfo(source).suffix());
        m_written = at(u"out/"_s + name + u'.' + encoding.fileExtension);
        return (progress ? m_reporting : m_service)
            .processReporting(item, m_written, encoding, settings, CancellationToken(), progress);
    }

    // Made on first use, so a shard only makes its own inputs.
    const Source *source(int index)
    {
        if (const auto made = m_sources.find(index); made != m_sources.end())
            return &made->second;
        const Input &input = m_inputs[static_cast<size_t>(index)];
        const QString path = at(u"in/"_s + input.name);
        const QString wav = path.endsWith(u".wav") ? path : path + u".wav"_s;
        if (!QDir().mkpath(at(u"in"_s)) ||
            !TestAudio::writeWav(wav, input.rate, input.channels, input.signal))
            return nullptr;
        if (wav != path) {
            const QString problem = TestAudio::encode(TestEnvironment::ffmpegPath(), wav, path,
                                                      input.role == Role::Cover);
            QFile::remove(wav);
            if (!problem.isEmpty()) {
                qWarning("%s", qPrintable(problem.right(400)));
                return nullptr;
            }
        }
        const auto meter = IndependentMeter::read(path, TestEnvironment::ffmpegPath());
        if (!meter)
            return nullptr;
        return &(m_sources[index] = {path, m_analyzer->analyze(path, target, ceiling, {}), *meter,
                                     RunChecks::digest(path)});
    }

    static bool inShard(int index)
    {
        const QStringList shard = qEnvironmentVariable("TONBROOK_MATRIX_SHARD").split(u'/');
        return shard.size() != 2 || index % shard[1].toInt() == shard[0].toInt();
    }

    // Starts the work and cancels it half a second in; how long it then took
    // to return, or -1 when it had already ended.
    static qint64 stopAfterHalfASecond(const std::function<void(const CancellationToken &)> &work)
    {
        CancellationToken token;
        auto running = std::async(std::launch::async, [&] {
            try {
                work(token);
            } catch (const std::exception &) {
            }
        });
        std::this_thread::sleep_for(500ms);
        if (running.wait_for(0ms) != std::future_status::timeout)
            return -1;
        QElapsedTimer timer;
        timer.start();
        token.cancel();
        running.get();
        return timer.elapsed();
    }

    // 48 kHz stereo, 4 s: the source of the files with metadata.
    QString tone()
    {
        const QString path = at(u"tone.wav"_s);
        return QFileInfo::exists(path) ||
                       TestAudio::writeWav(path, 48000, 2,
                                           {Segment::noise(-20, 2), Segment::sine(-17, 2)})
                   ? path
                   : QString();
    }

    // A broadcast WAV at 48 kHz: bext by ffmpeg, then iXML, markers, a region
    // and a loop; damaged, it ends in a chunk whose size runs past the end.
    QString broadcastWav(bool damaged)
    {
        const QString path = at(damaged ? u"bwf damaged.wav"_s : u"bwf.wav"_s);
        if (QFileInfo::exists(path))
            return path;
        QStringList arguments{u"-i"_s, tone(), u"-c:a"_s, u"pcm_s24le"_s, u"-write_bext"_s, u"1"_s};
        for (const QString &field :
             {u"description=Scene 4 take 2"_s, u"originator=Field recorder"_s,
              u"originator_reference=REF-42"_s, u"origination_date=2026-11-22"_s,
              u"origination_time=10:11:12"_s, u"time_reference=172800000"_s,
              u"coding_history=A=PCM,F=48000,W=24,M=stereo,T=recorder"_s})
            arguments << u"-metadata"_s << field;
        if (!runFFmpeg(arguments << path))
            return {};
        QByteArray wav = readAll(path) + chunk("iXML", ixml) + cueChunk(48000) + adtlChunk(48000) +
                         smplChunk(48000);
        if (damaged)
            wav += "JUNK" + littleEndian(0x7fffffffu);
        qToLittleEndian(quint32(wav.size() - 8), wav.data() + 4);
        return writeAll(path, wav) ? path : QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(TestEnvironment::commaLocaleActiveAsRequested());
        QVERIFY(m_dir.isValid());
    }

    void init()
    {
        const QByteArray function = QTest::currentTestFunction();
        if (function != "matrix" && !inShard(function == "cancellingRealRuns" ? 0 : 1))
            QSKIP("in another shard");
    }

    // Three minutes take seconds to measure or to write. Stopped, each returns
    // within a second, leaving no child, no hidden part file, the source and
    // the output of an earlier run as they were.
    void cancellingRealRuns()
    {
        const QString path = at(u"long.wav"_s);
        QVERIFY(TestAudio::writeWav(path, 48000, 2, {Segment::sine(-20, 180)}));
        const QByteArray before = RunChecks::digest(path);
        const QString earlier = at(u"cancel/long.mp3"_s);
        QVERIFY(writeAll(earlier, "an earlier run"));
        const qint64 measuring = stopAfterHalfASecond([&](const CancellationToken &token) {
            m_analyzer->analyze(path, target, ceiling, token);
        });
        std::optional<ProcessingError> error;
        const qint64 writing = stopAfterHalfASecond([&](const CancellationToken &token) {
            try {
                m_service.process(
                    {.sourcePath = path, .measurement = LoudnessMeasurement{-20, -20}}, earlier,
                    OutputEncoding::resolve(SourceAudioFormat::Wav, OutputFormatMode::Mp3,
                                            OutputBitDepth::Bit24, u"wav"_s),
                    {}, token);
            } catch (const ProcessingError &thrown) {
                error = thrown;
            }
        });
        QVERIFY2(measuring >= 0 && measuring < 1000 && writing >= 0 && writing < 1000,
                 qPrintable(u"measuring %1 ms, writing %2 ms"_s.arg(measuring).arg(writing)));
        QCOMPARE(error, std::optional(ProcessingError::cancelled()));
        QCOMPARE(readAll(earlier), QByteArray("an earlier run"));
        QCOMPARE(RunChecks::partFilesBelow(at(u"cancel"_s)), QStringList());
        QCOMPARE(RunChecks::digest(path), before);
        QCOMPARE(TestEnvironment::childProcessIds(), QList<qint64>());
    }

    void matrix_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("pass");
        for (int index = 0; index < static_cast<int>(m_inputs.size()); ++index) {
            const Input &input = m_inputs[static_cast<size_t>(index)];
            for (const Pass pass : {Pass::Stored, Pass::Measured, Pass::Converted}) {
                if (!inShard(index) || (pass == Pass::Converted && input.role != Role::Plain))
                    continue;
                const ProcessingSettings s = settingsFor(input, index, pass);
                QTest::addRow("%s -> %s %d %s, %s", qPrintable(input.name),
                              qPrintable(OutputFormatModes::rawValue(s.outputFormatMode)),
                              static_cast<int>(s.bitDepth),
                              qPrintable(SampleRateModes::rawValue(s.sampleRateMode)),
                              pass == Pass::Stored     ? "normalised"
                              : pass == Pass::Measured ? "measured in the pass"
                                                       : "converted")
                    << index << static_cast<int>(pass);
            }
        }
    }

    void matrix()
    {
        QFETCH(int, index);
        QFETCH(int, pass);
        const Input &input = m_inputs[static_cast<size_t>(index)];
        const ProcessingSettings settings = settingsFor(input, index, Pass(pass));
        const Source *made = source(index);
        QVERIFY(made);
        const LoudnessMeasurement &in = made->measured;
        const IndependentMeter &inMeter = made->meter;
        m_runner->takeRuns();
        const ProcessingResult result =
            process(made->path, u"%1-%2"_s.arg(index).arg(pass), settings,
                    Pass(pass) == Pass::Stored ? std::optional(in) : std::nullopt);
        const auto probe = MediaProbe::read(m_written);
        const auto out = IndependentMeter::read(m_written, TestEnvironment::ffmpegPath());
        QVERIFY(probe && out);
        const QByteArray figures =
            QString::asprintf("first pass I %.2f TP %.2f LRA %.2f; libebur128 in I %.2f TP %.2f "
                              "LRA %.2f, out I %.2f TP %.2f LRA %.2f; reported I %.2f TP %.2f "
                              "gain %.2f",
                              in.inputI, in.inputTP, in.inputLRA, inMeter.integratedLUFS,
                              inMeter.truePeakDBTP, inMeter.loudnessRange, out->integratedLUFS,
                              out->truePeakDBTP, out->loudnessRange,
                              result.finalLUFS.value_or(qQNaN()), result.truePeak.value_or(qQNaN()),
                              result.appliedGain.value_or(qQNaN()))
                .toUtf8();
        const char *why = figures.constData();

        // The first pass reads every format, rate and layout as libebur128
        // does (a mono file is one channel, 3 LU below the same on two).
        QVERIFY2(near(in.inputI, inMeter.integratedLUFS, 0.1), why);
        QVERIFY2(near(in.inputTP, inMeter.truePeakDBTP, 0.5), why);
        QCOMPARE(std::isfinite(in.inputI),
                 input.role != Role::Silent && input.role != Role::TooShort);
        QVERIFY2(!std::isfinite(in.inputI) || (near(in.inputLRA, inMeter.loudnessRange, 1) &&
                                               std::isfinite(in.targetOffset)),
                 why);
        QVERIFY2(input.role != Role::WideRange || in.inputLRA > 10, why);
        QVERIFY2(input.role != Role::SteadyTone || in.inputLRA == 0, why);
        QVERIFY2(input.role != Role::Silent || in.inputTP == minusInfinity, why);
        QVERIFY2(input.role != Role::Clipped || in.inputI > 0, why);

        // The source as it was, no hidden part file left; what libavformat
        // reads back is the container and codec asked for, at the rate and
        // with the channels the encoder takes, cover art where the container
        // holds it; a change is reported only where the encoder forced it.
        QCOMPARE(RunChecks::digest(made->path), made->digest);
        QCOMPARE(RunChecks::partFilesBelow(at(u"out"_s)), QStringList());
        const QString extension = QFileInfo(m_written).suffix().toLower();
        const bool mp3 = extension == u"mp3";
        const bool lossy = mp3 || extension == u"m4a";
        const int wantedRate =
            SampleRateModes::fixedRate(settings.sampleRateMode).value_or(input.rate);
        const int rate = mp3 ? std::min(wantedRate, 48000) : wantedRate;
        const int channels = mp3 ? std::min(input.channels, 2) : input.channels;
        const bool floating = settings.bitDepth == OutputBitDepth::Float32;
        const QString pcm = (floating ? u"pcm_f32"_s : u"pcm_s%1"_s.arg(int(settings.bitDepth))) +
                            (extension == u"wav" ? u"le"_s : u"be"_s);
        const MediaProbe expected{mp3                   ? u"mp3"_s
                                  : extension == u"m4a" ? u"mov,mp4,m4a,3gp,3g2,mj2"_s
                                  : extension == u"aif" ? u"aiff"_s
                                                        : extension,
                                  mp3                   ? u"mp3"_s
                                  : extension == u"m4a" ? u"aac"_s
                                                        : pcm,
                                  rate,
                                  channels,
                                  lossy ? probe->bitsPerSample
                                        : static_cast<int>(settings.bitDepth),
                                  input.role == Role::Cover && lossy ? 1 : 0,
                                  0};
        QCOMPARE(described(*probe), described(expected));
        QCOMPARE(result.changes.isEmpty(), rate == wantedRate && channels == input.channels);

        // The same programme, but for what a lower rate or a downmix takes away.
        const bool sameContent =
            channels == input.channels && (rate == input.rate || input.rate < 60000);
        if (Pass(pass) == Pass::Converted) {
            // Nothing gained: the source's loudness.
            QCOMPARE(result.outcome, ProcessingOutcome::Success);
            QVERIFY2(!sameContent || near(out->integratedLUFS, inMeter.integratedLUFS, 0.2), why);
            return;
        }
        if (!std::isfinite(in.inputI)) {
            // Nothing to normalise: written at unity gain.
            QVERIFY2(!result.finalLUFS && result.appliedGain == 0.0, why);
            QVERIFY2(!std::isfinite(out->integratedLUFS), why);
            QVERIFY2(near(out->truePeakDBTP, inMeter.truePeakDBTP, 0.5), why);
            return;
        }

        // At the target, or below it where the ceiling holds it back; never
        // above the ceiling; and reported as written.
        QVERIFY2(result.finalLUFS && result.truePeak && result.appliedGain, why);
        if (input.role == Role::MustBeLimited)
            QCOMPARE(result.outcome, ProcessingOutcome::PeakLimited);
        QVERIFY2(out->truePeakDBTP <= ceiling + 0.05, why);
        QVERIFY2(result.outcome == ProcessingOutcome::Success
                     ? std::abs(out->integratedLUFS - target) <= 0.2
                     : out->integratedLUFS < target,
                 why);
        QVERIFY2(std::abs(*result.finalLUFS - out->integratedLUFS) <= 0.1, why);
        // libebur128 oversamples a full-scale square's peaks less finely.
        QVERIFY2(std::abs(*result.truePeak - out->truePeakDBTP) <= (mp3 ? 0.4
                                                                    : input.role == Role::Clipped
                                                                        ? 0.25
                                                                        : 0.1),
                 why);

        // One static gain: loudnorm in its linear mode where it is used; the
        // range kept, the peak moved as far as the loudness, by the gain
        // reported. MP3 and AAC move peaks by themselves (about 1 dB on noise).
        const RecordingRunner::Run render = m_runner->takeRuns().value(0);
        QVERIFY(!render.arguments.join(u' ').contains(u"loudnorm=") ||
                render.result.standardError.contains(u"Normalization Type:   Linear"));
        if (!sameContent)
            return;
        const double gain = out->integratedLUFS - inMeter.integratedLUFS;
        QVERIFY2(std::abs(out->loudnessRange - inMeter.loudnessRange) <= 0.5, why);
        QVERIFY2(std::abs(out->truePeakDBTP - inMeter.truePeakDBTP - gain) <= (lossy ? 1.5 : 0.2),
                 why);
        QVERIFY2(std::abs(*result.appliedGain - gain) <= (lossy ? 0.5 : 0.1), why);
    }

    // Floating-point peaks 4 dB above full scale, converted: integer PCM clips
    // and says by how much; 32-bit float keeps them.
    void peaksAboveFullScale_data()
    {
        QTest::addColumn<OutputBitDepth>("depth");
        QTest::newRow("24-bit") << OutputBitDepth::Bit24;
        QTest::newRow("32-bit float") << OutputBitDepth::Float32;
    }

    void peaksAboveFullScale()
    {
        QFETCH(OutputBitDepth, depth);
        const QString hot = at(u"hot.wav"_s);
        QVERIFY(QFileInfo::exists(hot) ||
                TestAudio::writeWav(hot, 48000, 2, {Segment::sine(4, 2, 440)}));
        const ProcessingResult result = process(hot, QLatin1StringView(QTest::currentDataTag()),
                                                {.normalizeLoudness = false,
                                                 .bitDepth = depth,
                                                 .outputFormatMode = OutputFormatMode::Wav});
        const auto out = IndependentMeter::read(m_written, TestEnvironment::ffmpegPath());
        QVERIFY(out);
        const bool floating = depth == OutputBitDepth::Float32;
        QCOMPARE(result.outcome,
                 floating ? ProcessingOutcome::Success : ProcessingOutcome::Clipped);
        QCOMPARE(result.warningMessage.value_or(QString()).contains(u"+4."), !floating);
        QVERIFY2(floating ? out->truePeakDBTP > 3.5 : out->truePeakDBTP < 1,
                 QByteArray::number(out->truePeakDBTP).constData());
    }

    // A 24-bit tone at -96 dBFS into 16 bits: dithered, its error is noise
    // around the tone, not the 0/-1 staircase of dropping the low byte.
    void ditherAtLowLevel()
    {
        QVERIFY(TestAudio::writeWav(at(u"faint.wav"_s), 48000, 1, {Segment::sine(-96, 2)}));
        QCOMPARE(TestAudio::encode(TestEnvironment::ffmpegPath(), at(u"faint.wav"_s),
                                   at(u"faint.aiff"_s)),
                 QString());
        process(at(u"faint.aiff"_s), u"faint"_s,
                {.normalizeLoudness = false,
                 .bitDepth = OutputBitDepth::Bit16,
                 .outputFormatMode = OutputFormatMode::Wav});
        const QByteArray samples = chunksOf(readAll(m_written)).value("data");
        std::map<int, int> counts;
        for (qsizetype i = 0; i + 1 < samples.size(); i += 2)
            ++counts[qFromLittleEndian<qint16>(samples.constData() + i)];
        const QByteArray seen = QByteArray::number(counts.size()) + " values, +1 " +
                                QByteArray::number(counts[1]) + " times, -1 " +
                                QByteArray::number(counts[-1]) + " times";
        // As many +1 as -1, within 10 %.
        QVERIFY2(counts.size() >= 3 &&
                     std::abs(counts[1] - counts[-1]) < 0.1 * std::max(counts[1], counts[-1]),
                 seen.constData());
    }

    // While a file is written, ffmpeg's own report says how far it has come:
    // steadily forward, to the end.
    void progressWhileWriting()
    {
        const QString path = at(u"long take.wav"_s);
        QVERIFY(TestAudio::writeWav(path, 48000, 2, {Segment::noise(-24, 40)}));
        QList<double> heard;
        process(path, u"long take"_s, {.outputFormatMode = OutputFormatMode::Mp3}, {},
                [&heard](double fraction) { heard.append(fraction); });
        QByteArray said;
        for (const double fraction : heard)
            said += QByteArray::number(fraction) + ' ';
        QVERIFY2(heard.size() >= 2 && std::is_sorted(heard.cbegin(), heard.cend()) &&
                     heard.first() >= 0 && heard.last() > 0.95 && heard.last() <= 1.0,
                 said.constData());
    }

    void broadcastWav_data()
    {
        QTest::addColumn<OutputFormatMode>("mode");
        QTest::addColumn<SampleRateMode>("rate");
        QTest::addColumn<int>("outputRate");
        QTest::addColumn<QStringList>("notKept");
        const QStringList wavOnly{u"bext"_s, u"iXML"_s, u"loops"_s};
        QTest::newRow("WAV at 48 kHz")
            << OutputFormatMode::KeepOriginal << SampleRateMode::PreserveOriginal << 48000
            << QStringList();
        QTest::newRow("WAV at 44.1 kHz")
            << OutputFormatMode::Wav << SampleRateMode::Rate44100 << 44100 << QStringList();
        QTest::newRow("MP3") << OutputFormatMode::Mp3 << SampleRateMode::Rate48000 << 48000
                             << QStringList{u"bext"_s, u"iXML"_s, u"markers"_s, u"loops"_s};
        QTest::newRow("AIFF at 44.1 kHz")
            << OutputFormatMode::Aiff << SampleRateMode::Rate44100 << 44100 << wavOnly;
        QTest::newRow("CAF at 44.1 kHz")
            << OutputFormatMode::Caf << SampleRateMode::Rate44100 << 44100 << wavOnly;
    }

    void broadcastWav()
    {
        QFETCH(OutputFormatMode, mode);
        QFETCH(SampleRateMode, rate);
        QFETCH(int, outputRate);
        QFETCH(QStringList, notKept);
        const QString source = broadcastWav(false);
        QVERIFY(!source.isEmpty());
        QCOMPARE(process(source, QLatin1StringView(QTest::currentDataTag()),
                         {.sampleRateMode = rate, .outputFormatMode = mode})
                     .notKept,
                 notKept);
        const QByteArray file = readAll(m_written);
        // AIFF and CAF have markers of their own, at the same times, by name.
        const auto second = quint32(outputRate);
        QList<QByteArray> markers;
        if (mode == OutputFormatMode::Aiff)
            markers = {bigEndian(quint16(1)) + bigEndian(second) + "\7Thunder",
                       bigEndian(quint16(2)) + bigEndian(second * 5 / 2) + QByteArray(2, '\0')};
        if (mode == OutputFormatMode::Caf)
            markers = {bigEndian(double(second)) + bigEndian(1u),
                       bigEndian(2.5 * second) + bigEndian(2u), "Thunder"};
        for (const QByteArray &marker : markers)
            QVERIFY2(file.contains(marker), marker.toHex().constData());
        if (!m_written.endsWith(u".wav"))
            return;

        // The bext fields as they were, the timecode (samples since midnight)
        // at the new rate, one line more of coding history.
        const auto in = chunksOf(readAll(source));
        const auto written = chunksOf(file);
        const QByteArray bext = written.value("bext");
        QVERIFY(bext.size() >= 602);
        QCOMPARE(bext.left(338), in.value("bext").left(338));
        QCOMPARE(qFromLittleEndian<quint64>(bext.constData() + 338),
                 quint64(std::llround(172800000.0 * outputRate / 48000)));
        const QByteArray history = bext.mid(602);
        const QByteArray lines =
            "A=PCM,F=48000,W=24,M=stereo,T=recorder\r\nA=PCM,F=" + QByteArray::number(outputRate) +
            ",W=24,M=stereo,T=Tonbrook ";
        QVERIFY2(history.startsWith(lines) && history.contains("; -14.0 LUFS\r\n"),
                 history.constData());
        // iXML as it was; markers, the region and the loop at the same times.
        QCOMPARE(written.value("iXML"), ixml);
        QCOMPARE(written.value("cue "), cueChunk(outputRate).mid(8));
        QVERIFY(written.values("LIST").contains(adtlChunk(outputRate).mid(8)));
        QCOMPARE(written.value("smpl"), smplChunk(outputRate).mid(8));
    }

    void otherSources_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind :
             {"damaged chunk list", "AIFF tags", "MP3 ReplayGain", "ALAC kept", "MP3 converted"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

    void otherSources()
    {
        QFETCH(QString, kind);
        // The tone in the format the options ask for, with an artist and an album.
        const auto tagged = [this](const QString &name, const QStringList &options) {
            return runFFmpeg(QStringList{u"-i"_s, tone()} + options +
                             QStringList{u"-metadata"_s, u"artist=The Band"_s, u"-metadata"_s,
                                         u"album=Live"_s, at(name)})
                       ? at(name)
                       : QString();
        };
        if (kind == u"damaged chunk list") {
            // Only what ffmpeg itself reads is kept, and that is said.
            QCOMPARE(process(broadcastWav(true), kind, {}).notKept, QStringList{u"damaged"_s});
            QVERIFY(!chunksOf(readAll(m_written)).contains("iXML"));
        } else if (kind == u"AIFF tags") {
            process(tagged(u"tagged.aiff"_s, {u"-write_id3v2"_s, u"1"_s}), kind, {});
            const QString said = ffmpegSays(m_written);
            QVERIFY2(said.contains(u"The Band") && said.contains(u"Live"), qPrintable(said));
        } else if (kind == u"MP3 ReplayGain") {
            // A new gain makes the old figures wrong: gone from the tags and
            // from the LAME header (which ffmpeg reports as side data).
            const QString source =
                tagged(u"replaygain.mp3"_s, {u"-metadata"_s, u"REPLAYGAIN_TRACK_GAIN=-6.50 dB"_s,
                                             u"-metadata"_s, u"REPLAYGAIN_ALBUM_GAIN=-7.10 dB"_s});
            QVERIFY(ffmpegSays(source).contains(u"REPLAYGAIN_TRACK_GAIN"));
            process(source, kind, {});
            const QString said = ffmpegSays(m_written);
            QVERIFY2(!said.contains(u"REPLAYGAIN_") && !said.contains(u"replaygain: ") &&
                         said.contains(u"The Band"),
                     qPrintable(said));
        } else if (kind == u"ALAC kept") {
            process(tagged(u"lossless.m4a"_s, {u"-c:a"_s, u"alac"_s, u"-sample_fmt"_s, u"s16p"_s}),
                    kind, {});
            const QString said = ffmpegSays(m_written);
            QVERIFY2(said.contains(u"Audio: alac") && said.contains(u"s16p"), qPrintable(said));
        } else {
            // Nothing changes the audio: copied, not encoded again.
            const QString source = tagged(u"plain.mp3"_s, {u"-q:a"_s, u"5"_s});
            process(source, kind, {.normalizeLoudness = false});
            const QByteArray before = readAll(source);
            QVERIFY(readAll(m_written).contains(before.right(before.size() / 2)));
        }
    }
};

QTEST_GUILESS_MAIN(ProcessingMatrixTest)
#include "ProcessingMatrixTest.moc"

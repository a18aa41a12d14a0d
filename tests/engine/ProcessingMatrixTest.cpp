// SPDX-License-Identifier: GPL-3.0-or-later
//
// Both passes on real audio through the bundled ffmpeg, every output read back
// with libavformat and measured by libebur128. TONBROOK_MATRIX_SHARD=k/n runs
// every n-th row from k; cancelling runs in the first shard, the file checks
// in the second.
#include "IndependentMeter.h"
#include "MediaProbe.h"
#include "RunChecks.h"
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/FFmpegRunner.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/ProcessingError.h"
#include "model/LoudnessPreset.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <array>
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

struct Input
{
    QString name; // "<rate> Hz <channels> ch.<extension>" for the programme, also converted
    int rate;
    int channels;
    std::vector<Segment> signal;
};

std::vector<Input> inputs()
{
    // A tone above 22 kHz where the rate allows, so that a lower rate loses real energy.
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
    const auto n = Segment::noise;
    // A wide loudness range, none, peaks that must be limited, silence, less
    // than one gating block, a clipped square above 0 LUFS; cover art.
    list.insert(
        list.end(),
        {{u"ambience.wav"_s, 48000, 2, {n(-45, 6), n(-25, 6), n(-40, 6), n(-22, 6), n(-35, 6)}},
         {u"tone.wav"_s, 44100, 2, {Segment::sine(-18, 10)}},
         {u"kicks.wav"_s, 48000, 2, kicks},
         {u"silence.wav"_s, 48000, 2, {Segment::silence(5)}},
         {u"blip.wav"_s, 48000, 2, {Segment::sine(-20, 0.2)}},
         {u"square.wav"_s, 44100, 2, {{Segment::Kind::Square, 0, 6}}},
         {u"cover.mp3"_s, 44100, 2, programme(44100)},
         {u"cover.m4a"_s, 48000, 2, programme(48000)}});
    return list;
}

// Pass 0 normalises from the stored measurement, 1 measures in the pass, 2
// converts. The rows step through every output format x bit depth x rate mode,
// 5.1 into every format and 96 kHz into MP3, normalised and converted.
ProcessingSettings settingsFor(const Input &input, int index, int pass)
{
    const int c = index + 4 * pass;
    ProcessingSettings settings{.normalizeLoudness = pass < 2,
                                .sampleRateMode = SampleRateModes::all[c % 3],
                                .bitDepth = OutputBitDepths::all[c / 15 % 3],
                                .outputFormatMode = OutputFormatModes::all[c % 5]};
    // Cover art: kept in its own container, carried from M4A into MP3, dropped for PCM.
    if (input.name.startsWith(u"cover"))
        settings.outputFormatMode = pass == 0                      ? OutputFormatMode::KeepOriginal
                                    : input.name.endsWith(u".m4a") ? OutputFormatMode::Mp3
                                                                   : OutputFormatMode::Caf;
    return settings;
}

// The EBU Tech 3341 and 3342 cases, with the figures each defines.
struct Reference
{
    std::vector<Segment> signal;
    double integrated = qQNaN(); // LUFS
    double range = qQNaN();      // LU
    double truePeak = qQNaN();   // dBTP
    int rate = 48000;
};

// A true-peak case: 4 s at a fraction of 48 kHz from a phase, with fades.
std::vector<Segment> peakTone(double level, double divisor, double phase)
{
    return {{Segment::Kind::Sine, level, 4, 48000 / divisor, phase}};
}

// How far apart, 0 for the same infinity.
double distance(double a, double b)
{
    return a == b ? 0 : std::abs(a - b);
}

struct Source
{
    QString path;
    LoudnessMeasurement measured; // by the first pass
    IndependentMeter meter;
    QByteArray digest;
};

// What a file carries beyond the audio, through one processing.
struct Kept
{
    QString source = u"bwf.wav"_s;
    QStringList options; // to encode the tone with; none for a broadcast WAV
    ProcessingSettings settings;
    QStringList notKept;
    QStringList said;   // by ffmpeg of the output
    QStringList unsaid; // said of the source, not of the output
};

template<typename T>
QByteArray bytes(T value, bool bigEndian = false)
{
    QByteArray bytes(sizeof(T), '\0');
    bigEndian ? qToBigEndian(value, bytes.data()) : qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray chunk(const QByteArray &id, const QByteArray &body)
{
    return id + bytes(quint32(body.size())) + body + QByteArray(body.size() & 1, '\0');
}

// A broadcast WAV's chunks beyond the audio: iXML, markers at 1 s ("Thunder")
// and 2.5 s (a region of 0.5 s), a loop from 2 s to 3 s, at the rate.
QByteArrayList extraChunks(quint32 rate)
{
    QByteArray cue = bytes(2u);
    for (const quint32 at : {rate, rate * 5 / 2})
        cue += bytes(at == rate ? 1u : 2u) + bytes(at) + "data" + QByteArray(8, '\0') + bytes(at);
    QByteArray loop;
    for (const quint32 value : {0u, 0u, quint32(std::llround(1e9 / rate)), 60u, 0u, 0u, 0u, 1u, 0u,
                                1u, 0u, 2 * rate, 3 * rate, 0u, 0u})
        loop += bytes(value);
    return {chunk("iXML", "<?xml version=\"1.0\"?><BWFXML><SCENE>4</SCENE></BWFXML>"),
            chunk("cue ", cue),
            chunk("LIST",
                  "adtl" + chunk("labl", bytes(1u) + QByteArray("Thunder", 8)) +
                      chunk("ltxt", bytes(2u) + bytes(rate / 2) + "rgn " + QByteArray(8, '\0'))),
            chunk("smpl", loop)};
}

QString ffmpegSays(const QString &path)
{
    QProcess ffmpeg;
    ffmpeg.start(TestEnvironment::ffmpegPath(), {u"-hide_banner"_s, u"-i"_s, path});
    ffmpeg.waitForFinished(30000);
    return QString::fromUtf8(ffmpeg.readAllStandardError());
}

bool inShard(int index)
{
    const QStringList shard = qEnvironmentVariable("TONBROOK_MATRIX_SHARD").split(u'/');
    return shard.size() != 2 || index % shard[1].toInt() == shard[0].toInt();
}

// Starts the work and cancels it 0.2 s in; how long it then took to return,
// or -1 when it had already ended.
qint64 cancelledWhileRunning(const std::function<void(const CancellationToken &)> &work)
{
    CancellationToken token;
    auto running = std::async(std::launch::async, [&] { work(token); });
    std::this_thread::sleep_for(200ms);
    const bool ended = running.wait_for(0ms) == std::future_status::ready;
    QElapsedTimer timer;
    timer.start();
    token.cancel();
    running.wait();
    return ended ? -1 : timer.elapsed();
}

} // namespace

class ProcessingMatrixTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<FFmpegRunner> m_ffmpeg =
        std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath());
    std::shared_ptr<LoudnessAnalysisService> m_analyzer =
        std::make_shared<LoudnessAnalysisService>(m_ffmpeg);
    LoudnessProcessingService m_service{m_ffmpeg, m_analyzer};
    std::vector<Input> m_inputs = inputs();
    std::map<int, Source> m_sources;
    QString m_written;

    QString at(const QString &name) const { return m_dir.filePath(name); }

    // Writes the source as out/<name> at -14 LUFS where it normalises;
    // m_written is where it went.
    ProcessingResult process(const QString &source, const QString &name,
                             ProcessingSettings settings,
                             const std::optional<LoudnessMeasurement> &stored = {},
                             const std::function<void(double)> &progress = {},
                             const CancellationToken &token = {})
    {
        settings.selectedPreset = *LoudnessPreset::builtIn(u"streaming");
        const AudioFileItem item{.sourcePath = source,
                                 .sourceFormat = *SourceAudioFormats::fromFileName(source),
                                 .measurement = stored};
        const OutputEncoding encoding =
            OutputEncoding::resolve(item.sourceFormat, settings.outputFormatMode, settings.bitDepth,
                                    QFileInfo(source).suffix());
        m_written = at(u"out/"_s + name + u'.' + encoding.fileExtension);
        return m_service.processReporting(item, m_written, encoding, settings, token, progress);
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
            !TestAudio::writeWav(wav, input.rate, input.channels, input.signal) ||
            (wav != path && !TestAudio::encode(TestEnvironment::ffmpegPath(), wav, path,
                                               input.name.startsWith(u"cover"))
                                 .isEmpty()))
            return nullptr;
        const auto meter = IndependentMeter::read(path, TestEnvironment::ffmpegPath());
        return meter ? &(m_sources[index] = {path, m_analyzer->analyze(path, target, ceiling, {}),
                                             *meter, RunChecks::digest(path)})
                     : nullptr;
    }

    // A 48 kHz tone encoded with the options, or a broadcast WAV (bext by
    // ffmpeg, then the extra chunks; damaged, one whose size runs past the
    // end); all with the same tags, a broadcast WAV's fields.
    QString fileSource(const QString &name, const QStringList &options)
    {
        QStringList arguments{u"-v"_s, u"error"_s, u"-y"_s, u"-i"_s, at(u"tone.wav"_s)};
        arguments << (options.isEmpty()
                          ? QStringList{u"-c:a"_s, u"pcm_s24le"_s, u"-write_bext"_s, u"1"_s}
                          : options);
        for (const QString &field :
             {u"description=Scene 4 take 2"_s, u"originator=Field recorder"_s,
              u"originator_reference=REF-42"_s, u"origination_date=2026-11-22"_s,
              u"origination_time=10:11:12"_s, u"time_reference=172800000"_s,
              u"coding_history=A=PCM,F=48000,W=24,M=stereo,T=recorder"_s})
            arguments << u"-metadata"_s << field;
        if (QProcess::execute(TestEnvironment::ffmpegPath(), arguments << at(name)) != 0)
            return {};
        if (!options.isEmpty())
            return at(name);
        QByteArray wav = RunChecks::contents(at(name)) + extraChunks(48000).join();
        if (name.contains(u"damaged"))
            wav += "JUNK" + bytes(0x7fffffffu);
        qToLittleEndian(quint32(wav.size() - 8), wav.data() + 4);
        return RunChecks::write(at(name), wav) ? at(name) : QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(TestEnvironment::commaLocaleActiveAsRequested());
        QVERIFY(m_dir.isValid());
        QVERIFY(TestAudio::writeWav(at(u"tone.wav"_s), 48000, 2,
                                    {Segment::noise(-20, 2), Segment::sine(-17, 2)}));
    }

    void init()
    {
        const QByteArray function = QTest::currentTestFunction();
        if (function != "matrix" && function != "referenceSignals" &&
            !inShard(function == "cancellingRealRuns" ? 0 : 1))
            QSKIP("in another shard");
    }

    // The first pass at the source's own rate: the standard's figures within
    // its tolerances, and as loudnorm's own 192 kHz pass and libebur128 read them.
    void referenceSignals_data()
    {
        QTest::addColumn<Reference>("reference");
        const auto s = [](double level, double seconds) { return Segment::sine(level, seconds); };
        const std::pair<const char *, Reference> cases[] = {
            {"3341 case 1", {{s(-23, 20)}, -23}},
            {"3341 case 2", {{s(-33, 20)}, -33}},
            {"3341 case 3", {{s(-36, 10), s(-23, 60), s(-36, 10)}, -23}},
            {"3341 case 4", {{s(-72, 10), s(-36, 10), s(-23, 60), s(-36, 10), s(-72, 10)}, -23}},
            {"3341 case 5", {{s(-26, 20), s(-20, 20.1), s(-26, 20)}, -23}},
            {"3342 case 1", {.signal = {s(-20, 20), s(-30, 20)}, .range = 10}},
            {"3342 case 2", {.signal = {s(-20, 20), s(-15, 20)}, .range = 5}},
            {"3342 case 3", {.signal = {s(-40, 20), s(-20, 20)}, .range = 20}},
            {"3342 case 4",
             {.signal = {s(-50, 20), s(-35, 20), s(-20, 20), s(-35, 20), s(-50, 20)}, .range = 15}},
            // -6.02 dBFS is half of full scale.
            {"3341 case 15", {.signal = peakTone(-6.02, 4, 0), .truePeak = -6}},
            {"3341 case 16", {.signal = peakTone(-6.02, 4, 45), .truePeak = -6}},
            {"3341 case 17", {.signal = peakTone(-6.02, 6, 60), .truePeak = -6}},
            {"3341 case 18", {.signal = peakTone(-6.02, 8, 67.5), .truePeak = -6}},
            {"3341 case 19", {.signal = peakTone(2.98, 4, 45), .truePeak = 3}},
            // 44.1 kHz is no divisor of 192 kHz; a loud start and a quiet tail.
            {"programme 44.1 kHz",
             {.signal = {Segment::noise(-18, 6), Segment::sine(-9, 4, 3150), Segment::noise(-30, 8),
                         Segment::silence(2), Segment::sine(-14, 5, 220), Segment::noise(-24, 5)},
              .rate = 44100}},
        };
        for (int row = 0; row < int(std::size(cases)); ++row)
            if (inShard(row))
                QTest::newRow(cases[row].first) << cases[row].second;
    }

    void referenceSignals()
    {
        QFETCH(Reference, reference);
        const QString path = at(QLatin1StringView(QTest::currentDataTag()) + u".wav");
        QVERIFY(TestAudio::writeWav(path, reference.rate, 2, reference.signal));
        const LoudnessMeasurement m = m_analyzer->analyze(path, -23, -1, {});
        const LoudnessMeasurement old =
            LoudnessAnalysisService(m_ffmpeg, LoudnessAnalysisService::Meter::Loudnorm192k)
                .analyze(path, -23, -1, {});
        const auto independent = IndependentMeter::read(path, TestEnvironment::ffmpegPath());
        QVERIFY(independent);
        // loudnorm reads 0.05 LU low, and up to 0.08 LU on the 6-12 kHz peak
        // tones (its resampler's droop); libebur128 sides with the native rate.
        QCOMPARE_LE(std::abs(m.inputI - old.inputI),
                    std::isnan(reference.truePeak) ? 0.055 : 0.105);
        QCOMPARE_LE(std::abs(m.inputTP - old.inputTP), 0.1);
        QCOMPARE_LE(std::abs(m.inputI - independent->integratedLUFS), 0.05);
        if (!std::isnan(reference.integrated))
            QCOMPARE_LE(std::abs(m.inputI - reference.integrated), 0.1);
        if (!std::isnan(reference.range))
            QCOMPARE_LE(std::abs(m.inputLRA - reference.range), 1.0);
        if (!std::isnan(reference.truePeak)) {
            QCOMPARE_LE(m.inputTP, reference.truePeak + 0.2);
            QCOMPARE_GE(m.inputTP, reference.truePeak - 0.4);
        }
    }

    // Five minutes take seconds to measure or to write. Stopped, each returns
    // within 0.8 s (a healthy stop takes under 0.1 s, a run that ignores the
    // request over 1.5 s), leaving no child, no hidden part file, the source
    // and the output of an earlier run as they were.
    void cancellingRealRuns()
    {
        const QString path = at(u"long.wav"_s);
        const QString earlier = at(u"out/cancelled.mp3"_s);
        QVERIFY(TestAudio::writeWav(path, 48000, 2, {Segment::sine(-20, 300)}));
        QVERIFY(RunChecks::write(earlier, "an earlier run"));
        const QByteArray before = RunChecks::digest(path);
        const qint64 measuring = cancelledWhileRunning([&](const CancellationToken &token) {
            m_analyzer->analyze(path, target, ceiling, token);
        });
        std::optional<ProcessingError> error;
        const qint64 writing = cancelledWhileRunning([&](const CancellationToken &token) {
            try {
                process(path, u"cancelled"_s, {.outputFormatMode = OutputFormatMode::Mp3},
                        LoudnessMeasurement{-20, -20}, {}, token);
            } catch (const ProcessingError &thrown) {
                error = thrown;
            }
        });
        QVERIFY2(measuring >= 0 && measuring < 800 && writing >= 0 && writing < 800,
                 qPrintable(u"measuring %1 ms, writing %2 ms"_s.arg(measuring).arg(writing)));
        QCOMPARE(error, std::optional(ProcessingError::cancelled()));
        QCOMPARE(RunChecks::contents(earlier), QByteArray("an earlier run"));
        QCOMPARE(RunChecks::partFilesBelow(at(u"out"_s)), QStringList());
        QCOMPARE(RunChecks::digest(path), before);
        QCOMPARE(TestEnvironment::childProcessIds(), QList<qint64>());
    }

    void matrix_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("pass");
        for (int index = 0; index < static_cast<int>(m_inputs.size()); ++index) {
            const Input &input = m_inputs[static_cast<size_t>(index)];
            for (int pass = 0; inShard(index) && pass < (input.name.contains(u" Hz ") ? 3 : 2);
                 ++pass) {
                const ProcessingSettings s = settingsFor(input, index, pass);
                QTest::addRow("%s -> %s %d %s, %s", qPrintable(input.name),
                              qPrintable(OutputFormatModes::rawValue(s.outputFormatMode)),
                              static_cast<int>(s.bitDepth),
                              qPrintable(SampleRateModes::rawValue(s.sampleRateMode)),
                              std::array{"normalised", "measured in the pass", "converted"}[pass])
                    << index << pass;
            }
        }
    }

    void matrix()
    {
        QFETCH(int, index);
        QFETCH(int, pass);
        const Input &input = m_inputs[static_cast<size_t>(index)];
        const ProcessingSettings settings = settingsFor(input, index, pass);
        const Source *made = source(index);
        QVERIFY(made);
        const LoudnessMeasurement &in = made->measured;
        const IndependentMeter &inMeter = made->meter;
        // The first pass reads every format, rate, layout and signal as
        // libebur128 does (a mono file is one channel; silence is -inf).
        QCOMPARE_LE(distance(in.inputI, inMeter.integratedLUFS), 0.1);
        QCOMPARE_LE(distance(in.inputTP, inMeter.truePeakDBTP), 0.5);
        if (std::isfinite(in.inputI))
            QCOMPARE_LE(distance(in.inputLRA, inMeter.loudnessRange), 1.0);
        QCOMPARE(std::isfinite(in.targetOffset), std::isfinite(in.inputI));

        const ProcessingResult result =
            process(made->path, u"%1-%2"_s.arg(index).arg(pass), settings,
                    pass == 0 ? std::optional(in) : std::nullopt);
        const auto probe = MediaProbe::read(m_written);
        const auto out = IndependentMeter::read(m_written, TestEnvironment::ffmpegPath());
        QVERIFY(probe && out);
        // The source as it was, no part file left; the container and codec
        // asked for, at the rate and with the channels the encoder takes, the
        // cover where the container holds it; a change reported only where
        // the encoder forced it.
        QCOMPARE(RunChecks::digest(made->path), made->digest);
        QCOMPARE(RunChecks::partFilesBelow(at(u"out"_s)), QStringList());
        const QString extension = QFileInfo(m_written).suffix().toLower();
        const bool mp3 = extension == u"mp3";
        const bool m4a = extension == u"m4a";
        const int wantedRate =
            SampleRateModes::fixedRate(settings.sampleRateMode).value_or(input.rate);
        const int rate = mp3 ? std::min(wantedRate, 48000) : wantedRate;
        const int channels = mp3 ? std::min(input.channels, 2) : input.channels;
        const int bits = static_cast<int>(settings.bitDepth);
        QCOMPARE(probe->containerName, m4a                   ? u"mov,mp4,m4a,3gp,3g2,mj2"_s
                                       : extension == u"aif" ? u"aiff"_s
                                                             : extension);
        QCOMPARE(probe->audioCodec, mp3   ? u"mp3"_s
                                    : m4a ? u"aac"_s
                                          : u"pcm_%1%2%3"_s.arg(bits == 32 ? u"f"_s : u"s"_s)
                                                .arg(bits)
                                                .arg(extension == u"wav" ? u"le" : u"be"));
        QCOMPARE(probe->sampleRate, rate);
        QCOMPARE(probe->channels, channels);
        QCOMPARE(probe->attachedPictures, input.name.startsWith(u"cover") && (mp3 || m4a) ? 1 : 0);
        QCOMPARE(probe->otherVideoStreams, 0);
        QCOMPARE(result.changes.isEmpty(), rate == wantedRate && channels == input.channels);

        // The same programme, but for what a lower rate or a downmix takes away.
        const bool sameContent =
            channels == input.channels && (rate == input.rate || input.rate < 60000);
        if (pass == 2) { // nothing gained: the source's loudness
            QCOMPARE(result.outcome, ProcessingOutcome::Success);
            if (sameContent)
                QCOMPARE_LE(distance(out->integratedLUFS, inMeter.integratedLUFS), 0.2);
            return;
        }
        if (!std::isfinite(in.inputI)) { // nothing to normalise: unity gain
            QVERIFY(!result.finalLUFS && result.appliedGain == 0.0);
            QCOMPARE(out->integratedLUFS, -qInf());
            if (std::isfinite(inMeter.truePeakDBTP)) // silence stays silence, but for dither
                QCOMPARE_LE(distance(out->truePeakDBTP, inMeter.truePeakDBTP), 0.5);
            return;
        }
        // At the target, or below where the ceiling holds it back; under the
        // ceiling; reported as written (libebur128 oversamples the peaks of a
        // full-scale square, the input above 0 LUFS, less finely).
        QVERIFY(result.finalLUFS && result.truePeak && result.appliedGain);
        if (input.name == u"kicks.wav")
            QCOMPARE(result.outcome, ProcessingOutcome::PeakLimited);
        QCOMPARE_LE(out->truePeakDBTP, ceiling + 0.05);
        if (result.outcome == ProcessingOutcome::Success)
            QCOMPARE_LE(std::abs(out->integratedLUFS - target), 0.2);
        else
            QCOMPARE_LT(out->integratedLUFS, target);
        QCOMPARE_LE(std::abs(*result.finalLUFS - out->integratedLUFS), 0.1);
        QCOMPARE_LE(std::abs(*result.truePeak - out->truePeakDBTP), mp3             ? 0.4
                                                                    : in.inputI > 0 ? 0.25
                                                                                    : 0.1);

        // One static gain: the range kept, the peak moved as far as the
        // loudness, by the gain reported. MP3 and AAC move peaks by themselves
        // (about 1 dB on noise).
        if (!sameContent)
            return;
        const double gain = out->integratedLUFS - inMeter.integratedLUFS;
        QCOMPARE_LE(std::abs(out->loudnessRange - inMeter.loudnessRange), 0.5);
        if (!(mp3 || m4a) || channels <= 2) // AAC has its own way with a 5.1 LFE channel
            QCOMPARE_LE(std::abs(out->truePeakDBTP - inMeter.truePeakDBTP - gain),
                        mp3 || m4a ? 1.5 : 0.2);
        QCOMPARE_LE(std::abs(*result.appliedGain - gain), mp3 || m4a ? 0.5 : 0.1);
    }

    // Floating-point peaks 4 dB above full scale, converted: integer PCM clips
    // and says by how much; 32-bit float keeps them.
    void peaksAboveFullScale()
    {
        const QString hot = at(u"hot.wav"_s);
        QVERIFY(TestAudio::writeWav(hot, 48000, 2, {Segment::sine(4, 2, 440)}));
        for (const OutputBitDepth depth : {OutputBitDepth::Bit24, OutputBitDepth::Float32}) {
            const ProcessingResult result = process(hot, u"hot %1"_s.arg(static_cast<int>(depth)),
                                                    {.normalizeLoudness = false,
                                                     .bitDepth = depth,
                                                     .outputFormatMode = OutputFormatMode::Wav});
            const auto out = IndependentMeter::read(m_written, TestEnvironment::ffmpegPath());
            const bool clipped = depth != OutputBitDepth::Float32;
            QVERIFY(out && (clipped ? out->truePeakDBTP < 1 : out->truePeakDBTP > 3.5));
            QCOMPARE(result.outcome,
                     clipped ? ProcessingOutcome::Clipped : ProcessingOutcome::Success);
            QCOMPARE(result.warningMessage.value_or(QString()).contains(u"+4."), clipped);
        }
    }

    // A 24-bit tone at -96 dBFS into 16 bits: dithered, its error is noise
    // around the tone (as many +1 as -1), not the 0/-1 staircase of dropping
    // the low byte.
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
        const QByteArray wav = RunChecks::contents(m_written);
        std::map<int, int> counts;
        for (qsizetype i = wav.indexOf("data") + 8; i + 1 < wav.size(); i += 2)
            ++counts[qFromLittleEndian<qint16>(wav.constData() + i)];
        QCOMPARE_GE(counts.size(), size_t(3));
        QCOMPARE_LT(std::abs(counts[1] - counts[-1]), 0.1 * std::max(counts[1], counts[-1]));
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
        QVERIFY2(heard.size() >= 2 && std::is_sorted(heard.cbegin(), heard.cend()) &&
                     heard.first() >= 0 && heard.last() > 0.95 && heard.last() <= 1.0,
                 qPrintable(QDebug::toString(heard)));
    }

    // What a file carries beyond the audio is kept where the output can hold
    // it, at the same times when the rate changes, and said where it cannot.
    void keptBeyondTheAudio_data()
    {
        QTest::addColumn<Kept>("kept");
        const QStringList bext{u"Scene 4 take 2"_s, u"Field recorder"_s, u"REF-42"_s,
                               u"2026-11-22"_s,     u"10:11:12"_s,       u"T=recorder"_s,
                               u"; -14.0 LUFS"_s};
        const QStringList noLoops{u"bext"_s, u"iXML"_s, u"loops"_s};
        const auto at44 = [](OutputFormatMode mode) {
            return ProcessingSettings{.sampleRateMode = SampleRateMode::Rate44100,
                                      .outputFormatMode = mode};
        };
        const std::pair<const char *, Kept> rows[] = {
            {"WAV at 48 kHz",
             {.said =
                  bext + QStringList{u"172800000"_s, u"A=PCM,F=48000,W=24,M=stereo,T=Tonbrook"_s}}},
            {"WAV at 44.1 kHz",
             {.settings = at44(OutputFormatMode::Wav),
              .said =
                  bext + QStringList{u"158760000"_s, u"A=PCM,F=44100,W=24,M=stereo,T=Tonbrook"_s}}},
            {"MP3",
             {.settings = {.outputFormatMode = OutputFormatMode::Mp3},
              .notKept = {u"bext"_s, u"iXML"_s, u"markers"_s, u"loops"_s}}},
            {"AIFF at 44.1 kHz", {.settings = at44(OutputFormatMode::Aiff), .notKept = noLoops}},
            {"CAF at 44.1 kHz", {.settings = at44(OutputFormatMode::Caf), .notKept = noLoops}},
            // Only what ffmpeg itself reads is kept, and that is said.
            {"damaged chunk list", {.source = u"bwf damaged.wav"_s, .notKept = {u"damaged"_s}}},
            {"AIFF tags",
             {.source = u"tagged.aiff"_s,
              .options = {u"-write_id3v2"_s, u"1"_s, u"-metadata"_s, u"album=Live"_s},
              .said = {u"Scene 4 take 2"_s, u"Live"_s}}},
            // A new gain makes the old figures wrong, in the tags and in LAME's header.
            {"MP3 ReplayGain",
             {.source = u"replaygain.mp3"_s,
              .options = {u"-metadata"_s, u"REPLAYGAIN_TRACK_GAIN=-6.50 dB"_s, u"-metadata"_s,
                          u"REPLAYGAIN_ALBUM_GAIN=-7.10 dB"_s},
              .said = {u"Scene 4 take 2"_s},
              .unsaid = {u"REPLAYGAIN_"_s, u"replaygain: "_s}}},
            {"ALAC kept",
             {.source = u"lossless.m4a"_s,
              .options = {u"-c:a"_s, u"alac"_s, u"-sample_fmt"_s, u"s16p"_s},
              .said = {u"Audio: alac"_s, u"s16p"_s}}},
            // Nothing changes the audio: copied, not encoded again.
            {"MP3 converted",
             {.source = u"plain.mp3"_s,
              .options = {u"-q:a"_s, u"5"_s},
              .settings = {.normalizeLoudness = false}}},
        };
        for (const auto &[name, kept] : rows)
            QTest::newRow(name) << kept;
    }

    void keptBeyondTheAudio()
    {
        QFETCH(Kept, kept);
        const QString path = fileSource(kept.source, kept.options);
        QVERIFY(!path.isEmpty());
        const QString before = ffmpegSays(path);
        QCOMPARE(process(path, QLatin1StringView(QTest::currentDataTag()), kept.settings).notKept,
                 kept.notKept);
        const QString after = ffmpegSays(m_written);
        for (const QString &text : kept.said)
            QVERIFY2(after.contains(text), qPrintable(text + u'\n' + after));
        for (const QString &text : kept.unsaid)
            QVERIFY2(before.contains(text) && !after.contains(text),
                     qPrintable(text + u'\n' + after));
        const QByteArray source = RunChecks::contents(path);
        const QByteArray file = RunChecks::contents(m_written);
        if (!kept.settings.normalizeLoudness)
            QVERIFY(file.contains(source.right(source.size() / 2)));

        // A broadcast WAV's extra chunks as they were, at the same times; in
        // AIFF and CAF the markers as their own, by name.
        const auto rate =
            quint32(SampleRateModes::fixedRate(kept.settings.sampleRateMode).value_or(48000));
        const QString extension = QFileInfo(m_written).suffix();
        QByteArrayList marks =
            kept.options.isEmpty() && extension == u"wav" ? extraChunks(rate) : QByteArrayList();
        if (extension == u"aiff" && kept.options.isEmpty())
            marks = {bytes(quint16(1), true) + bytes(rate, true) + "\7Thunder",
                     bytes(quint16(2), true) + bytes(rate * 5 / 2, true) + QByteArray(2, '\0')};
        if (extension == u"caf") // positions as doubles, each followed by its id; names apart
            marks = {bytes(double(rate), true) + bytes(1u, true),
                     bytes(2.5 * rate, true) + bytes(2u, true), "Thunder"};
        for (const QByteArray &mark : marks)
            QVERIFY2(file.contains(mark) != kept.notKept.contains(u"damaged"),
                     mark.toHex().constData());
    }
};

QTEST_GUILESS_MAIN(ProcessingMatrixTest)
#include "ProcessingMatrixTest.moc"

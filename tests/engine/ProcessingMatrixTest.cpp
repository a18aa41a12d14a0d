// SPDX-License-Identifier: GPL-3.0-or-later
//
// The processing pass on real audio through the bundled ffmpeg, every output
// read back: container, codec, rate and depth with libavformat; loudness, peak
// and range with the measuring pass; linear mode from loudnorm's own summary.
//
// Inputs: six source formats x mono/stereo x 44.1/48/96 kHz (no 96 kHz MP3),
// plus a wide-range ambience, a steady tone, peaky transients, silence, a file
// shorter than one gating block, a clipped square wave, and an MP3 and an M4A
// carrying cover art. Each input is processed under two configurations,
// rotating through output mode x bit depth x sample-rate mode so that all 30
// combinations appear (the cover-art files instead go MP3->MP3, MP3->CAF,
// M4A->M4A and M4A->MP3); the first uses the stored measurement, the second
// lets the service measure. Target -14 LUFS, ceiling -1 dBTP.
//
// TONBROOK_MATRIX_SHARD=k/n runs every n-th input from k, so ctest can run
// the matrix in parallel.
#include "MediaProbe.h"
#include "RecordingRunner.h"
#include "RunChecks.h"
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/OutputEncoding.h"
#include "engine/ProcessingError.h"
#include "localization/L.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <map>
#include <thread>

using Segment = TestAudio::Segment;

namespace {

constexpr double target = -14.0;
constexpr double ceiling = -1.0;

struct Input
{
    QString name; // file name, extension included
    int rate = 48000;
    int channels = 2;
    std::vector<Segment> signal;
    bool withCover = false;
    // What the signal is there to exercise.
    enum class Role
    {
        Plain,
        WideRange,
        SteadyTone,
        MustBeLimited,
        NotFinite,
        Clipped,
    } role = Role::Plain;
};

std::vector<Segment> music()
{
    return {Segment::sine(-20, 2, 440), Segment::noise(-28, 2)};
}

std::vector<Input> inputs()
{
    std::vector<Input> list;
    for (const char *extension : {"wav", "aiff", "aif", "caf", "mp3", "m4a"})
        for (int rate : {44100, 48000, 96000})
            for (int channels : {1, 2}) {
                if (QByteArray(extension) == "mp3" && rate > 48000)
                    continue;
                list.push_back({QStringLiteral("music %1 %2ch.%3")
                                    .arg(rate)
                                    .arg(channels)
                                    .arg(QLatin1StringView(extension)),
                                rate, channels, music()});
            }
    std::vector<Segment> peaky;
    for (int i = 0; i < 20; ++i) {
        peaky.push_back(Segment::sine(-1, 0.005, 1000));
        peaky.push_back(Segment::noise(-50, 0.495));
    }
    list.push_back({QStringLiteral("ambience.wav"),
                    48000,
                    2,
                    {Segment::noise(-45, 6), Segment::noise(-25, 6), Segment::noise(-40, 6),
                     Segment::noise(-22, 6), Segment::noise(-35, 6)},
                    false,
                    Input::Role::WideRange});
    list.push_back({QStringLiteral("tone.wav"),
                    44100,
                    2,
                    {Segment::sine(-18, 10)},
                    false,
                    Input::Role::SteadyTone});
    list.push_back(
        {QStringLiteral("kicks.wav"), 48000, 2, peaky, false, Input::Role::MustBeLimited});
    list.push_back({QStringLiteral("silence.wav"),
                    48000,
                    2,
                    {Segment::silence(5)},
                    false,
                    Input::Role::NotFinite});
    list.push_back({QStringLiteral("blip.wav"),
                    48000,
                    2,
                    {Segment::sine(-20, 0.2)},
                    false,
                    Input::Role::NotFinite});
    list.push_back({QStringLiteral("square.wav"),
                    44100,
                    2,
                    {Segment::square(0, 6)},
                    false,
                    Input::Role::Clipped});
    list.push_back({QStringLiteral("cover.mp3"), 44100, 2, music(), true});
    list.push_back({QStringLiteral("cover.m4a"), 48000, 2, music(), true});
    return list;
}

struct Config
{
    OutputFormatMode mode;
    OutputBitDepth depth;
    SampleRateMode rateMode;
    bool measurementStored;
};

Config config(const Input &input, int index, bool first)
{
    const int c = first ? index : index + 11;
    Config chosen{OutputFormatModes::all[c % 5], OutputBitDepths::all[c % 2],
                  SampleRateModes::all[c % 3], first};
    // Cover art: kept in its own container, carried from M4A into MP3, dropped for PCM.
    if (input.withCover)
        chosen.mode = first ? OutputFormatMode::KeepOriginal
                            : (input.name.endsWith(QStringLiteral(".m4a")) ? OutputFormatMode::Mp3
                                                                           : OutputFormatMode::Caf);
    return chosen;
}

// Written files as libavformat names them, independent of the encoding table.
struct ExpectedStream
{
    QString container;
    QString codec;
    int bits;
};

ExpectedStream expectedStream(const QString &extension, OutputBitDepth depth)
{
    const QString pcmDepth =
        depth == OutputBitDepth::Bit16 ? QStringLiteral("16") : QStringLiteral("24");
    const int bits = depth == OutputBitDepth::Bit16 ? 16 : 24;
    const QString lower = extension.toLower();
    if (lower == u"wav")
        return {QStringLiteral("wav"), QStringLiteral("pcm_s") + pcmDepth + QStringLiteral("le"),
                bits};
    if (lower == u"aiff" || lower == u"aif")
        return {QStringLiteral("aiff"), QStringLiteral("pcm_s") + pcmDepth + QStringLiteral("be"),
                bits};
    if (lower == u"caf")
        return {QStringLiteral("caf"), QStringLiteral("pcm_s") + pcmDepth + QStringLiteral("be"),
                bits};
    if (lower == u"mp3")
        return {QStringLiteral("mp3"), QStringLiteral("mp3"), 0};
    return {QStringLiteral("mov,mp4,m4a,3gp,3g2,mj2"), QStringLiteral("aac"), 0};
}

using RunChecks::digest;

struct Worst
{
    double loudness = 0;
    QString loudnessWhere;
    double peakOverCeiling = -99;
    QString peakWhere;
    double range = 0;
    double peakVersusGainPcm = 0;
    double peakVersusGainLossy = 0;
    int loudnormLinear = 0;
    int loudnormDynamic = 0;
    int volume = 0;
    QStringList volumeWhy;
    int unfiltered = 0;
    int outputs = 0;
};

} // namespace

class ProcessingMatrixTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<RecordingRunner> m_runner =
        std::make_shared<RecordingRunner>(TestEnvironment::ffmpegPath());
    LoudnessAnalysisService m_analyzer{
        std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath())};
    LoudnessProcessingService m_service{
        m_runner, std::make_shared<LoudnessAnalysisService>(
                      std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath()))};
    std::vector<Input> m_inputs = inputs();
    std::map<int, QString> m_paths;
    std::map<int, LoudnessMeasurement> m_measured;
    std::map<int, QByteArray> m_digests;
    Worst m_worst;

    LoudnessMeasurement measure(const QString &path)
    {
        return m_analyzer.analyze(path, target, ceiling, CancellationToken());
    }

    // Made on first use, so a shard only makes its own inputs.
    QString source(int index)
    {
        if (m_paths.count(index))
            return m_paths[index];
        const Input &input = m_inputs[index];
        const QString folder = m_dir.filePath(QStringLiteral("in"));
        QDir().mkpath(folder);
        const QString path = folder + u'/' + input.name;
        const QString wav = path + QStringLiteral(".src.wav");
        if (!TestAudio::writeWav(wav, input.rate, input.channels, input.signal))
            return {};
        QString problem;
        if (input.withCover)
            problem = TestAudio::encodeWithCover(TestEnvironment::ffmpegPath(), wav, path);
        else if (path.endsWith(QStringLiteral(".wav")))
            problem = QFile::rename(wav, path) ? QString() : QStringLiteral("rename failed");
        else
            problem = TestAudio::encode(TestEnvironment::ffmpegPath(), wav, path);
        QFile::remove(wav);
        if (!problem.isEmpty()) {
            qWarning("%s", qPrintable(problem.right(400)));
            return {};
        }
        m_measured[index] = measure(path);
        m_digests[index] = digest(path);
        m_paths[index] = path;
        return path;
    }

    bool inShard(int index) const
    {
        const QStringList shard = qEnvironmentVariable("TONBROOK_MATRIX_SHARD").split(u'/');
        if (shard.size() != 2)
            return true;
        return index % shard[1].toInt() == shard[0].toInt();
    }

    void noteFilter(const QString &tag, const RecordingRunner::Run &run)
    {
        const qsizetype af = run.arguments.indexOf(QStringLiteral("-af"));
        if (af < 0) {
            ++m_worst.unfiltered;
            return;
        }
        const QString filter = run.arguments.at(af + 1);
        if (filter.startsWith(QStringLiteral("volume="))) {
            ++m_worst.volume;
            m_worst.volumeWhy << tag;
        } else if (run.result.standardError.contains(
                       QStringLiteral("Normalization Type:   Linear"))) {
            ++m_worst.loudnormLinear;
        } else {
            ++m_worst.loudnormDynamic;
        }
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(TestEnvironment::commaLocaleActiveAsRequested());
        QVERIFY(m_dir.isValid());
    }

    void cleanupTestCase()
    {
        for (const auto &[index, path] : m_paths)
            QCOMPARE(digest(path), m_digests[index]);
        qInfo("outputs %d; loudnorm linear %d, dynamic %d; volume %d (%s); no filter %d",
              m_worst.outputs, m_worst.loudnormLinear, m_worst.loudnormDynamic, m_worst.volume,
              qPrintable(m_worst.volumeWhy.join(u", ")), m_worst.unfiltered);
        qInfo("worst |I - finalLUFS| %.3f LU (%s); highest TP - ceiling %+.3f dB (%s); "
              "worst |dLRA| %.3f LU; worst |dTP - dI| %.3f dB PCM, %.3f dB MP3/AAC",
              m_worst.loudness, qPrintable(m_worst.loudnessWhere), m_worst.peakOverCeiling,
              qPrintable(m_worst.peakWhere), m_worst.range, m_worst.peakVersusGainPcm,
              m_worst.peakVersusGainLossy);
        QCOMPARE(m_worst.loudnormDynamic, 0);
    }

    void cancellingARealRunLeavesTheOldOutput()
    {
        if (!inShard(0))
            QSKIP("runs in the first shard");
        const QString path = m_dir.filePath(QStringLiteral("long.wav"));
        QVERIFY(TestAudio::writeWav(path, 48000, 2, {Segment::noise(-20, 240)}));
        const QByteArray before = digest(path);
        const QString destination = m_dir.filePath(QStringLiteral("cancel/long.wav"));
        QVERIFY(QDir().mkpath(QFileInfo(destination).path()));
        {
            QFile old(destination);
            QVERIFY(old.open(QIODevice::WriteOnly));
            old.write("the output of an earlier run");
        }
        ProcessingSettings settings;
        settings.sampleRateMode = SampleRateMode::Rate44100;
        const AudioFileItem item{.id = QUuid::createUuid(),
                                 .sourcePath = path,
                                 .relativePath = QStringLiteral("long.wav"),
                                 .measurement = LoudnessMeasurement{-20, -8, 3, -30, 0}};
        CancellationToken token;
        std::thread canceller([&token] {
            std::this_thread::sleep_for(std::chrono::milliseconds(400));
            token.cancel();
        });
        try {
            m_service.process(item, destination,
                              OutputEncoding::resolve(SourceAudioFormat::Wav, OutputFormatMode::Wav,
                                                      OutputBitDepth::Bit24, QStringLiteral("wav")),
                              settings, token);
            canceller.join();
            QFAIL("expected cancellation");
        } catch (const ProcessingError &error) {
            canceller.join();
            QCOMPARE(error, ProcessingError::cancelled());
        }
        QFile old(destination);
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), QByteArray("the output of an earlier run"));
        QVERIFY(QDir(QFileInfo(destination).path())
                    .entryList({QStringLiteral(".tbpart-*")}, QDir::Files | QDir::Hidden)
                    .isEmpty());
        QCOMPARE(digest(path), before);
        QCOMPARE(TestEnvironment::childProcessIds(), QList<qint64>());
        m_runner->takeRuns();
    }

    void matrix_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("first");
        for (int index = 0; index < static_cast<int>(m_inputs.size()); ++index) {
            if (!inShard(index))
                continue;
            for (bool first : {true, false}) {
                const Config c = config(m_inputs[index], index, first);
                QTest::addRow("%s -> %s %s %s%s", qPrintable(m_inputs[index].name),
                              qPrintable(OutputFormatModes::rawValue(c.mode)),
                              qPrintable(L::bitDepthLabel(c.depth)),
                              qPrintable(SampleRateModes::rawValue(c.rateMode)),
                              c.measurementStored ? "" : " (measured in pass)")
                    << index << first;
            }
        }
    }

    void matrix()
    {
        QFETCH(int, index);
        QFETCH(bool, first);
        const Input &input = m_inputs[index];
        const Config c = config(input, index, first);
        const QString path = source(index);
        QVERIFY(!path.isEmpty());
        const LoudnessMeasurement in = m_measured[index];

        switch (input.role) {
        case Input::Role::WideRange:
            QVERIFY2(in.inputLRA > 10, qPrintable(QString::number(in.inputLRA)));
            break;
        case Input::Role::SteadyTone:
            QCOMPARE(in.inputLRA, 0.0);
            break;
        case Input::Role::NotFinite:
            QVERIFY(!std::isfinite(in.inputI));
            break;
        case Input::Role::Clipped:
            QVERIFY2(in.inputI > 0, qPrintable(QString::number(in.inputI)));
            break;
        default:
            break;
        }

        const auto format = SourceAudioFormats::fromFileName(input.name);
        QVERIFY(format);
        const AudioFileItem item{.id = QUuid::createUuid(),
                                 .sourcePath = path,
                                 .relativePath = input.name,
                                 .sourceFormat = *format,
                                 .measurement =
                                     c.measurementStored ? std::optional(in) : std::nullopt};
        ProcessingSettings settings;
        settings.selectedPreset = *LoudnessPreset::builtIn(u"streaming");
        settings.truePeakCeiling = ceiling;
        settings.outputFormatMode = c.mode;
        settings.bitDepth = c.depth;
        settings.sampleRateMode = c.rateMode;
        const OutputEncoding encoding =
            OutputEncoding::resolve(*format, c.mode, c.depth, QFileInfo(path).suffix());
        const QString outFolder = m_dir.filePath(QStringLiteral("out/%1").arg(index));
        const QString destination =
            outFolder + QStringLiteral("/%1.%2").arg(first ? 1 : 2).arg(encoding.fileExtension);
        // LAME stops at 48 kHz: "preserve original" keeps as close as it can.
        int expectedRate = SampleRateModes::fixedRate(c.rateMode).value_or(input.rate);
        if (encoding.fileExtension == u"mp3" && expectedRate > 48000)
            expectedRate = 48000;
        m_runner->takeRuns();
        const ProcessingResult result =
            m_service.process(item, destination, encoding, settings, CancellationToken());
        ++m_worst.outputs;
        QCOMPARE(digest(path), m_digests[index]);
        QVERIFY(QDir(outFolder)
                    .entryList({QStringLiteral(".tbpart-*")}, QDir::Files | QDir::Hidden)
                    .isEmpty());

        // The rendering first; measurements and corrected renderings of the
        // written file may follow where it could differ from the plan.
        const QList<RecordingRunner::Run> runs = m_runner->takeRuns();
        QVERIFY(!runs.isEmpty());
        noteFilter(QString::fromLatin1(QTest::currentDataTag()), runs.constFirst());

        const auto probe = MediaProbe::read(destination);
        QVERIFY(probe);
        const ExpectedStream expected = expectedStream(encoding.fileExtension, c.depth);
        QCOMPARE(probe->containerName, expected.container);
        QCOMPARE(probe->audioCodec, expected.codec);
        if (expected.bits)
            QCOMPARE(probe->bitsPerSample, expected.bits);
        QCOMPARE(probe->sampleRate, expectedRate);
        QCOMPARE(probe->channels, input.channels);
        QCOMPARE(probe->otherVideoStreams, 0);
        const bool lossy = encoding.fileExtension == u"mp3" || encoding.fileExtension == u"m4a";
        QCOMPARE(probe->attachedPictures, input.withCover && lossy ? 1 : 0);

        const LoudnessMeasurement out = measure(destination);
        const QString tag = QString::fromLatin1(QTest::currentDataTag());
        if (!std::isfinite(in.inputI)) {
            QVERIFY(!result.finalLUFS);
            QCOMPARE(result.appliedGain, std::optional(0.0));
            QVERIFY(!std::isfinite(out.inputI));
            if (std::isfinite(in.inputTP))
                QVERIFY2(std::abs(out.inputTP - in.inputTP) <= 0.5,
                         qPrintable(QString::number(out.inputTP)));
            return;
        }

        QVERIFY(result.finalLUFS && result.appliedGain);
        if (input.role == Input::Role::MustBeLimited)
            QCOMPARE(result.outcome, ProcessingOutcome::PeakLimited);

        const double loudnessError = std::abs(out.inputI - *result.finalLUFS);
        const double peakOver = out.inputTP - ceiling;
        const double rangeError = std::abs(out.inputLRA - in.inputLRA);
        const double peakVersusGain =
            std::abs((out.inputTP - in.inputTP) - (out.inputI - in.inputI));
        if (loudnessError > m_worst.loudness) {
            m_worst.loudness = loudnessError;
            m_worst.loudnessWhere = tag;
        }
        if (peakOver > m_worst.peakOverCeiling) {
            m_worst.peakOverCeiling = peakOver;
            m_worst.peakWhere = tag;
        }
        m_worst.range = std::max(m_worst.range, rangeError);
        double &worstPeakVersusGain =
            lossy ? m_worst.peakVersusGainLossy : m_worst.peakVersusGainPcm;
        worstPeakVersusGain = std::max(worstPeakVersusGain, peakVersusGain);

        const QString figures =
            QStringLiteral("in I %1 TP %2 LRA %3; out I %4 TP %5 LRA %6; final %7")
                .arg(in.inputI)
                .arg(in.inputTP)
                .arg(in.inputLRA)
                .arg(out.inputI)
                .arg(out.inputTP)
                .arg(out.inputLRA)
                .arg(*result.finalLUFS);
        QVERIFY2(loudnessError <= 0.2, qPrintable(figures));
        QVERIFY2(peakOver <= 0.1, qPrintable(figures));
        QVERIFY2(rangeError <= 0.5, qPrintable(figures));
        // One static gain moves the peak as far as the loudness. MP3 and AAC
        // encoding moves peaks by itself (about 1 dB on noise), so lossy
        // outputs get more room; linear mode is proven by loudnorm's summary.
        QVERIFY2(peakVersusGain <= (lossy ? 1.5 : 0.5), qPrintable(figures));
    }
};

QTEST_GUILESS_MAIN(ProcessingMatrixTest)
#include "ProcessingMatrixTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// The processing pass's command lines, results and file handling, with a stand-in ffmpeg.
#include "engine/LoudnessProcessingService.h"

#include "FakeFFmpegRunner.h"
#include "RunChecks.h"
#include "ScriptedAnalyzer.h"
#include "TestAudio.h"
#include "engine/AudioMetadata.h"
#include "engine/CancellationToken.h"
#include "engine/FFmpegProgress.h"
#include "engine/GainFilter.h"
#include "engine/PartFile.h"
#include "engine/ProcessingError.h"
#include "engine/SystemError.h"
#include "model/StandardPath.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

namespace {

using Measurement = LoudnessMeasurement;
const Measurement quietFile{-20.5, -8.25, 7.1, -31.0, 0.3};
// Too loud a peak for -14 LUFS under -1 dBTP: limited to -18 LUFS.
const Measurement peakyFile{-20.0, -3.0, 7.1, -31.0, 0.3};
const OutputEncoding wav24{QStringLiteral("wav"),
                           {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}};

using RunChecks::contents;

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// The value given to an option; empty when the option is not there.
QString valueOf(const QStringList &arguments, const QString &option)
{
    const qsizetype at = arguments.indexOf(option);
    return at < 0 ? QString() : arguments.value(at + 1);
}

// Streaming: -14 LUFS under -1 dBTP.
ProcessingSettings settings(SampleRateMode rate = SampleRateMode::Rate48000, bool normalize = true)
{
    return {.normalizeLoudness = normalize,
            .selectedPreset = *LoudnessPreset::builtIn(u"streaming"),
            .sampleRateMode = rate};
}

// One processing run that succeeds, and what it gives.
struct Run
{
    QString source = QStringLiteral("Take 1.wav");
    bool normalize = true;
    std::optional<Measurement> stored;
    // What measuring the source finds now.
    Measurement now = quietFile;
    SampleRateMode rateMode = SampleRateMode::PreserveOriginal;
    QString extension = QStringLiteral("wav");
    // The rate ffmpeg is asked to write.
    int rate = 44100;
    ProcessingResult expected;
};

// One that fails: what happens, what is thrown (described), and how far it got.
struct Failure
{
    QString scenario;
    QString expected;
    int ffmpegRuns = 0;
    int analyses = 1;
    QString destination; // the earlier output's own path when empty
    bool normalize = true;
};

} // namespace

Q_DECLARE_METATYPE(Run)
Q_DECLARE_METATYPE(Failure)
Q_DECLARE_METATYPE(QList<LoudnessMeasurement>)

class LoudnessProcessingServiceTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<FakeFFmpegRunner> m_runner;
    std::shared_ptr<ScriptedAnalyzer> m_analyzer;
    QString m_source;

    LoudnessProcessingService service() const { return {m_runner, m_analyzer}; }

    AudioFileItem item(std::optional<Measurement> measurement, const QString &source = {}) const
    {
        return {.sourcePath = source.isEmpty() ? m_source : source, .measurement = measurement};
    }

    // ffmpeg's part: write the file it was given last (numbered by the run), then exit.
    void ffmpegWrites(const QByteArray &bytes, int exitCode = 0,
                      CancellationToken *cancelDuringRun = nullptr)
    {
        m_runner->respond = [=, this](const QStringList &arguments) {
            write(arguments.last(), bytes + QByteArray::number(m_runner->calls().size()));
            if (cancelDuringRun)
                cancelDuringRun->cancel();
            return FFmpegResult{exitCode, {}, QStringLiteral("ffmpeg's complaint")};
        };
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(TestEnvironment::commaLocaleActiveAsRequested());
        m_source = m_dir.filePath(QStringLiteral("Take 1.wav"));
        QVERIFY(TestAudio::writeWav(m_source, 44100, 2, {TestAudio::Segment::sine(-20, 0.5)}));
        write(m_dir.filePath(QStringLiteral("notes.wav")), "plain text");
    }

    void init()
    {
        m_runner = std::make_shared<FakeFFmpegRunner>();
        m_analyzer = std::make_shared<ScriptedAnalyzer>(
            [](const QString &, const CancellationToken &) { return quietFile; });
        ffmpegWrites("run ");
    }

    void cleanup() { QCOMPARE(RunChecks::partFilesBelow(m_dir.path()), QStringList()); }

    // The float source is 44.1 kHz: written at that rate as integer PCM, the
    // prediction is exact and nothing is measured after writing.
    void process_data()
    {
        QTest::addColumn<Run>("run");
        using R = SampleRateMode;
        const ProcessingResult reached{
            .originalLUFS = -20.5, .finalLUFS = -14.0, .appliedGain = 6.5, .truePeak = -1.75};
        // The warning quotes the loudness the item came in with.
        const auto limited = [](const QString &stored) {
            return ProcessingResult{
                .originalLUFS = -20.0,
                .finalLUFS = -18.0,
                .appliedGain = 2.0,
                .truePeak = -1.0,
                .outcome = ProcessingOutcome::PeakLimited,
                .warningMessage = QStringLiteral("Target ") + stored +
                                  QStringLiteral(" \u2192 could not reach target without exceeding "
                                                 "the true peak ceiling. Normalized to the highest "
                                                 "safe level.")};
        };
        QTest::newRow("converted at 48 kHz: no figures")
            << Run{.normalize = false, .rateMode = R::Rate48000, .rate = 48000};
        QTest::newRow("reached target, as MP3") << Run{.stored = quietFile,
                                                       .rateMode = R::Rate44100,
                                                       .extension = u"mp3"_qs,
                                                       .expected = reached};
        QTest::newRow("limited, stored loudness in the warning")
            << Run{.stored = peakyFile, .now = peakyFile, .expected = limited(u"-20.00"_qs)};
        QTest::newRow("limited, measured only now: 0.00 in the warning")
            << Run{.now = peakyFile, .expected = limited(u"0.00"_qs)};
        QTest::newRow("a rate that cannot be read is taken as 48 kHz") << Run{
            .source = u"notes.wav"_qs, .stored = quietFile, .rate = 48000, .expected = reached};
    }

    void process()
    {
        QFETCH(Run, run);
        m_analyzer->respond = [=](const QString &, const CancellationToken &) { return run.now; };
        const QString source = m_dir.filePath(run.source);
        const QString destination =
            m_dir.filePath(QStringLiteral("out/%1/Take 1.%2")
                               .arg(QLatin1StringView(QTest::currentDataTag()), run.extension));
        const OutputEncoding encoding{run.extension,
                                      {QStringLiteral("-c:a"), run.extension == u"mp3"
                                                                   ? QStringLiteral("libmp3lame")
                                                                   : QStringLiteral("pcm_s24le")}};
        const ProcessingResult result =
            service().process(item(run.stored, source), destination, encoding,
                              settings(run.rateMode, run.normalize), CancellationToken());
        run.expected.sourceFileName = run.source;
        run.expected.outputFileName = QFileInfo(destination).fileName();
        QCOMPARE(result, run.expected);
        // Converted into integer PCM, the float source is measured for peaks above full scale.
        QCOMPARE(m_analyzer->calls(), run.normalize && run.stored ? 0 : 1);
        QCOMPARE(contents(destination), QByteArray("run 1"));

        const QStringList arguments = m_runner->calls().constLast().arguments;
        QCOMPARE(valueOf(arguments, QStringLiteral("-i")), source);
        const Measurement measured = run.stored.value_or(run.now);
        const bool gain = run.normalize && std::isfinite(measured.inputI);
        const QString filter =
            GainFilter::choose(measured, NormalizationPlan::compute(measured, -14, -1), -1).text;
        QCOMPARE(valueOf(arguments, QStringLiteral("-af")), gain ? filter : QString());
        QCOMPARE(valueOf(arguments, QStringLiteral("-ar")), QString::number(run.rate));
        QCOMPARE(arguments.contains(QStringLiteral("-dither_method")), run.extension == u"wav");
        QVERIFY(arguments.join(u' ').contains(encoding.codecArguments.join(u' ')));
        // Cover art rides along into MP3 only.
        QCOMPARE(valueOf(arguments, QStringLiteral("-c:v")),
                 run.extension == u"mp3" ? QStringLiteral("copy") : QString());
        // Tags a new gain makes wrong are cleared.
        QCOMPARE(arguments.contains(QStringLiteral("REPLAYGAIN_TRACK_GAIN=")), gain);
        QCOMPARE(QFileInfo(arguments.last()).path(), QFileInfo(destination).path());
        QVERIFY(QFileInfo(arguments.last()).fileName().startsWith(PartFile::prefix));
    }

    // What each failure throws and what it leaves: an earlier output survives.
    void failures_data()
    {
        QTest::addColumn<Failure>("failure");
        const QString blocker = m_dir.filePath(QStringLiteral("out/Take 1.wav"));
        const QString same = ProcessingError::destinationEqualsSource().describe();
        QTest::newRow("ffmpeg fails") << Failure{
            u"exit 1"_qs, ProcessingError::ffmpegFailed(1, u"ffmpeg's complaint"_qs).describe(), 1};
        QTest::newRow("cancelled while ffmpeg ran, though it exited 0")
            << Failure{u"cancel in run"_qs, ProcessingError::cancelled().describe(), 1};
        QTest::newRow("cancelled before: measured, never written")
            << Failure{u"cancelled"_qs, ProcessingError::cancelled().describe()};
        QTest::newRow("measuring fails") << Failure{
            u"analysis fails"_qs,
            ProcessingError::analysisFailed(FFmpegError::binaryNotFound().describe()).describe()};
        QTest::newRow("a file where the folder must go")
            << Failure{{},
                       ProcessingError::writeFailed(systemErrorAt(ENOTDIR, blocker)).describe(),
                       0,
                       1,
                       blocker + u"/Take 1.wav"};
        QTest::newRow("ffmpeg cannot start: its error as it is") << Failure{
            u"launch fails"_qs, FFmpegError::launchFailed(u"Permission denied"_qs).describe(), 1};
        QTest::newRow("source gone") << Failure{
            u"source gone"_qs,
            ProcessingError::sourceMissing(m_dir.filePath(u"moved away.wav"_qs)).describe(), 0, 0};
        QTest::newRow("destination is the source, converting")
            << Failure{{}, same, 0, 0, m_dir.filePath(u"Take 1.wav"_qs), false};
        QTest::newRow("destination is the source through dot-dot")
            << Failure{{}, same, 0, 0, m_dir.path() + u"/out/../Take 1.wav"};
    }

    void failures()
    {
        QFETCH(Failure, failure);
        QVERIFY(QDir().mkpath(m_dir.filePath(QStringLiteral("out"))));
        const QString previous = m_dir.filePath(QStringLiteral("out/Take 1.wav"));
        write(previous, "previous output");
        CancellationToken token;
        const QString &scenario = failure.scenario;
        if (scenario == u"exit 1")
            ffmpegWrites("partial", 1);
        if (scenario == u"cancel in run")
            ffmpegWrites("complete", 0, &token);
        if (scenario == u"launch fails")
            m_runner->respond = [](const QStringList &) -> FFmpegResult {
                throw FFmpegError::launchFailed(QStringLiteral("Permission denied"));
            };
        if (scenario == u"cancelled")
            token.cancel();
        if (scenario == u"analysis fails")
            m_analyzer->respond = [](const QString &, const CancellationToken &) -> Measurement {
                throw FFmpegError::binaryNotFound();
            };
        const QString source = scenario == u"source gone"
                                   ? m_dir.filePath(QStringLiteral("moved away.wav"))
                                   : QString();

        QString thrown;
        try {
            service().process(item(std::nullopt, source),
                              failure.destination.isEmpty() ? previous : failure.destination, wav24,
                              settings(SampleRateMode::Rate48000, failure.normalize), token);
        } catch (const EngineError &error) {
            thrown = error.describe();
        }
        QCOMPARE(thrown, failure.expected);
        QCOMPARE(m_runner->calls().size(), failure.ffmpegRuns);
        QCOMPARE(m_analyzer->calls(), failure.analyses);
        QCOMPARE(contents(previous), QByteArray("previous output"));
    }

    // The file measured earlier is used only while it is unchanged; a name
    // taken while ffmpeg wrote gives way to the next free one.
    void guardsJustBeforeWriting()
    {
        const QString source = m_dir.filePath(QStringLiteral("guarded.wav"));
        QVERIFY(TestAudio::writeWav(source, 44100, 2, {TestAudio::Segment::sine(-20, 0.5)}));
        AudioFileItem stored = item(peakyFile, source);
        stored.measuredStamp = AudioMetadata::stamp(source);
        const QString destination = m_dir.filePath(QStringLiteral("guarded/take.wav"));
        m_runner->respond = [=](const QStringList &arguments) {
            write(arguments.last(), "new output");
            write(destination, "the user's own");
            return FFmpegResult{};
        };
        const auto process = [&] {
            return service().process(stored, destination, wav24,
                                     settings(SampleRateMode::PreserveOriginal), {});
        };
        const ProcessingResult unchanged = process();
        QCOMPARE(unchanged.originalLUFS, peakyFile.inputI);
        QCOMPARE(m_analyzer->calls(), 0);
        QCOMPARE(unchanged.outputFileName, QStringLiteral("take 2.wav"));
        QCOMPARE(contents(m_dir.filePath(QStringLiteral("guarded/take 2.wav"))), "new output");
        QCOMPARE(contents(destination), QByteArray("the user's own"));

        QVERIFY(TestAudio::writeWav(source, 44100, 2, {TestAudio::Segment::sine(-50, 0.7)}));
        QCOMPARE(process().originalLUFS, quietFile.inputI);
        QCOMPARE(m_analyzer->calls(), 1);
    }

    // Another rate (here 44.1 to 48 kHz) makes the prediction an estimate:
    // the written file is measured and, when it misses, written once more.
    void writtenFileIsMeasuredWhereItCanDiffer_data()
    {
        QTest::addColumn<QList<Measurement>>("written");
        QTest::addColumn<double>("gain");
        QTest::addColumn<ProcessingOutcome>("outcome");
        const auto m = [](double i, double tp) { return Measurement{i, tp, 3, i - 10, 0}; };
        using O = ProcessingOutcome;
        // Planned: 6.5 dB, -14 LUFS, -1.75 dBTP against a -1 dBTP ceiling.
        QTest::newRow("on target: written once") << QList{m(-14.05, -1.8)} << 6.5 << O::Success;
        QTest::newRow("0.6 LU short: raised")
            << QList{m(-14.6, -2.3), m(-14.02, -1.72)} << 7.1 << O::Success;
        QTest::newRow("over the ceiling: lowered by the overshoot and a margin")
            << QList{m(-14.0, -0.7), m(-14.5, -1.2)} << 6.0 << O::PeakLimited;
        QTest::newRow("a second correction at most; still over: limited, as measured")
            << QList{m(-14.0, -0.7), m(-14.5, -0.8), m(-14.9, -0.9)} << 5.6 << O::PeakLimited;
        QTest::newRow("the second correction scaled by the encoder's response")
            << QList{m(-14.6, -2.3), m(-13.8, -1.5), m(-14.03, -1.73)} << 6.95 << O::Success;
    }

    void writtenFileIsMeasuredWhereItCanDiffer()
    {
        QFETCH(QList<Measurement>, written);
        QFETCH(double, gain);
        QFETCH(ProcessingOutcome, outcome);
        auto answers = std::make_shared<QList<Measurement>>(written);
        m_analyzer->respond = [answers](const QString &path, const CancellationToken &) {
            // Only the hidden file ffmpeg wrote is measured, never the source.
            const bool isPart = fileNameOf(path).startsWith(PartFile::prefix);
            return isPart && !answers->isEmpty() ? answers->takeFirst() : Measurement();
        };
        const QString destination =
            m_dir.filePath(QStringLiteral("verified/%1/Take 1.wav")
                               .arg(QLatin1StringView(QTest::currentDataTag())));
        const ProcessingResult result =
            service().process(item(quietFile), destination, wav24, settings(), {});

        QCOMPARE(m_analyzer->calls(), written.size());
        QCOMPARE(m_runner->calls().size(), written.size());
        if (written.size() > 1)
            QCOMPARE(valueOf(m_runner->calls().constLast().arguments, QStringLiteral("-af")),
                     QStringLiteral("volume=%1dB:precision=double").arg(gain, 0, 'f', 2));
        QVERIFY(result.measured);
        QCOMPARE(result.finalLUFS, std::optional(written.last().inputI));
        QCOMPARE(result.truePeak, std::optional(written.last().inputTP));
        QCOMPARE(result.appliedGain, std::optional(gain));
        QCOMPARE(result.outcome, outcome);
        QCOMPARE(contents(destination), "run " + QByteArray::number(written.size()));
    }

    // ffmpeg's -progress report: the newest position written, in microseconds.
    void progress_data()
    {
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::addColumn<QList<qint64>>("positions"); // after each piece; -1 for none
        QTest::newRow("one block") << QByteArrayList{"frame=0\nout_time_us=1500000\nout_time=00:00:"
                                                     "01.5\nprogress=continue\n"}
                                   << QList<qint64>{1500000};
        QTest::newRow("split inside the key and the number: a line waits for its end")
            << QByteArrayList{"out_ti", "me_us=25", "00000\nprogress=end\n"}
            << QList<qint64>{-1, -1, 2500000};
        QTest::newRow("two blocks in one piece: the newer")
            << QByteArrayList{"out_time_us=100\nprogress=continue\nout_time_us=200\n"}
            << QList<qint64>{200};
        QTest::newRow("before the first frame ffmpeg writes N/A")
            << QByteArrayList{"out_time_us=N/A\n", "out_time_us=-5\n", "out_time_us=7\n"}
            << QList<qint64>{-1, -1, 7};
    }

    void progress()
    {
        QFETCH(QByteArrayList, pieces);
        QFETCH(QList<qint64>, positions);
        FFmpegProgress progress;
        for (qsizetype i = 0; i < pieces.size(); ++i)
            QCOMPARE(progress.feed(pieces[i]).value_or(-1), positions[i]);
    }
};

QTEST_GUILESS_MAIN(LoudnessProcessingServiceTest)
#include "LoudnessProcessingServiceTest.moc"

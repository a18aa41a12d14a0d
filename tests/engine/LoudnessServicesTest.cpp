// SPDX-License-Identifier: GPL-3.0-or-later
//
// Both passes with a stand-in ffmpeg: the measuring pass's command line and
// what it makes of the block ffmpeg prints; the processing pass's command
// lines, results and file handling, the hidden files it writes into; and what
// each failure says to the user.
#include "../localization/LanguageFixture.h"
#include "FakeFFmpegRunner.h"
#include "RunChecks.h"
#include "ScriptedAnalyzer.h"
#include "TestAudio.h"
#include "engine/AudioMetadata.h"
#include "engine/CancellationToken.h"
#include "engine/ErrorTranslator.h"
#include "engine/FFmpegProgress.h"
#include "engine/LoudnessAnalysisError.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/PartFile.h"
#include "engine/ProcessingError.h"
#include "engine/SystemError.h"
#include "localization/L.h"
#include "model/StandardPath.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

using Error = std::shared_ptr<const std::exception>;

namespace {

using Measurement = LoudnessMeasurement;
const Measurement quietFile{-20.5, -8.25, 7.1, -31.0, 0.3};
// Too loud a peak for -14 LUFS under -1 dBTP: limited to -18 LUFS.
const Measurement peakyFile{-20.0, -3.0, 7.1, -31.0, 0.3};
const OutputEncoding wav24{QStringLiteral("wav"),
                           {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}};

using RunChecks::contents;

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
    std::optional<Measurement> stored;
    // What measuring the source finds now.
    Measurement now = quietFile;
    SampleRateMode rateMode = SampleRateMode::PreserveOriginal;
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

// What the meter prints at the end of a measuring pass, tab-indented.
QString block(const QString &inputI = u"\"-20.50\""_qs, const QString &inputTP = u"\"-6.20\""_qs)
{
    return QStringLiteral("[Parsed_ebur128_0 @ 0x55d0c8a1c2c0] \n{\n"
                          "\t\"input_i\" : %1,\n\t\"input_tp\" : %2,\n"
                          "\t\"input_lra\" : \"7.10\",\n\t\"input_thresh\" : \"-31.00\",\n"
                          "\t\"output_i\" : \"-14.02\",\n\t\"normalization_type\" : \"dynamic\",\n"
                          "\t\"target_offset\" : \"0.30\"\n}\n")
        .arg(inputI, inputTP);
}

const QString shownName = QStringLiteral("Kick 01.wav");

template<typename E>
void row(const char *tag, const E &error, L::Text message, std::optional<QString> details)
{
    QTest::newRow(tag) << Error(std::make_shared<E>(error))
                       << (message == L::CancelledMessage ? L::text(message)
                                                          : L::text(message, shownName))
                       << details;
}

// ffmpeg's complaint, with its exit status in the details.
void ffmpeg(const char *tag, int code, const char *text, L::Text message)
{
    const QString complaint = QString::fromLatin1(text);
    row(tag, ProcessingError::ffmpegFailed(code, complaint), message,
        QStringLiteral("ffmpeg exit code %1\n\n").arg(code) + complaint);
}

// A failure whose details are the system's (or the path's) own words.
void said(const char *tag, ProcessingError (*make)(const QString &), const char *text,
          L::Text message)
{
    row(tag, make(QString::fromLatin1(text)), message, QString::fromLatin1(text));
}

// A process id that was just in use and is free now.
qint64 deadPid()
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return child;
}

// This process's hidden-file name for "take.wav" with another owner put in.
QString withOwner(qint64 pid, const QString &boot = {})
{
    QString name = PartFile::nameFor(u"take.wav"_qs);
    const qsizetype pidStart = PartFile::prefix.size();
    const qsizetype pidEnd = name.indexOf(u'-', pidStart);
    if (!boot.isEmpty())
        name.replace(pidEnd + 1, 8, boot);
    return name.replace(pidStart, pidEnd - pidStart, QString::number(pid));
}

} // namespace

Q_DECLARE_METATYPE(Run)
Q_DECLARE_METATYPE(Failure)
Q_DECLARE_METATYPE(QList<LoudnessMeasurement>)

class LoudnessServicesTest : public QObject
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

    // ffmpeg's part: write the file it was given last (numbered by the run), then
    // exit.
    void ffmpegWrites(const QByteArray &bytes, int exitCode = 0)
    {
        m_runner->respond = [=, this](const QStringList &arguments) {
            RunChecks::write(arguments.last(),
                             bytes + QByteArray::number(m_runner->calls().size()));
            return FFmpegResult{exitCode, {}, QStringLiteral("ffmpeg's complaint")};
        };
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(TestEnvironment::commaLocaleActiveAsRequested());
        m_source = m_dir.filePath(QStringLiteral("Take 1.wav"));
        QVERIFY(TestAudio::writeWav(m_source, 44100, 2, {TestAudio::Segment::sine(-20, 0.5)}));
        QVERIFY(RunChecks::write(m_dir.filePath(QStringLiteral("notes.wav")), "plain text"));
    }

    void init()
    {
        m_runner = std::make_shared<FakeFFmpegRunner>();
        m_analyzer = std::make_shared<ScriptedAnalyzer>(
            [](const QString &, const CancellationToken &) { return quietFile; });
        ffmpegWrites("run ");
    }

    void cleanup() { QCOMPARE(RunChecks::partFilesBelow(m_dir.path()), QStringList()); }

    // Only standard error is read (the stand-in prints a block on standard
    // output every time); a complete block counts whatever the exit status.
    void judgesTheRun_data()
    {
        QTest::addColumn<int>("exitCode"); // -1: ffmpeg cannot be started
        QTest::addColumn<QString>("standardError");
        QTest::addColumn<QString>("expected"); // the five figures, "failed" or "unreadable"
        const QString figures = QStringLiteral("-20.5 -6.2 7.1 -31 0.3");
        QTest::newRow("clean run") << 0 << block() << figures;
        QTest::newRow("non-zero after a full block") << 255 << block() << figures;
        QTest::newRow("non-zero without a block")
            << 1 << u"x.wav: Invalid data found when processing input\n"_qs << "failed";
        QTest::newRow("zero without a block") << 0 << u"no block here\n"_qs << "unreadable";
        QTest::newRow("braces in earlier log lines")
            << 0 << QStringLiteral("Input #0, wav, from 'a{b}.wav':\n  title : {x}\n") + block()
            << figures;
        QTest::newRow("infinity in other cases")
            << 0 << block(u"\"-INF\""_qs, u"\"Inf\""_qs) << "-inf inf 7.1 -31 0.3";
        QTest::newRow("bare number") << 0 << block(u"-20.50"_qs) << "unreadable";
        QTest::newRow("letters") << 0 << block(u"\"loud\""_qs) << "unreadable";
        QTest::newRow("padded number") << 0 << block(u"\" -20.50\""_qs) << "unreadable";
        QTest::newRow("cut short") << 0 << block().chopped(3) << "unreadable";
        QTest::newRow("missing key")
            << 0 << block().replace(u"\"target_offset\""_qs, u"\"offset\""_qs) << "unreadable";
        QTest::newRow("the runner's own error, unchanged")
            << -1 << QString()
            << FFmpegError::launchFailed(QStringLiteral("Permission denied")).describe();
    }

    void judgesTheRun()
    {
        QFETCH(int, exitCode);
        QFETCH(QString, standardError);
        m_runner->respond = [=](const QStringList &) -> FFmpegResult {
            if (exitCode < 0)
                throw FFmpegError::launchFailed(QStringLiteral("Permission denied"));
            return {exitCode, block(), standardError};
        };
        const QString path = QStringLiteral("/home/u/Звуки и шумы/Take 1 \"final\", -i x.wav");
        QString outcome;
        try {
            const LoudnessMeasurement m =
                LoudnessAnalysisService(m_runner).analyze(path, -18.25, -1, {});
            outcome = QStringLiteral("%1 %2 %3 %4 %5")
                          .arg(m.inputI)
                          .arg(m.inputTP)
                          .arg(m.inputLRA)
                          .arg(m.inputThresh)
                          .arg(m.targetOffset);
        } catch (const LoudnessAnalysisError &error) {
            outcome =
                error == LoudnessAnalysisError::ffmpegFailed(exitCode, standardError) ? u"failed"_qs
                : error == LoudnessAnalysisError::parseFailed(standardError) ? u"unreadable"_qs
                                                                             : error.describe();
        } catch (const EngineError &error) {
            outcome = error.describe();
        }
        QTEST(outcome, "expected");
        // The awkward path travels as one argument and the target reaches the
        // meter in the comma locale too.
        const QStringList arguments = m_runner->calls().constLast();
        QCOMPARE(arguments.count(path), 1);
        QCOMPARE(arguments.at(arguments.indexOf(path) - 1), QStringLiteral("-i"));
        QCOMPARE(arguments.filter(QStringLiteral("target_i=-18.2")).size(), 1);
    }

    // The float source is 44.1 kHz: written at that rate as integer PCM, the
    // prediction is exact and nothing is measured after writing. What the
    // written file holds (codec, rate, dither, cover, tags) the processing
    // matrix reads back from real runs.
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
        QTest::newRow("reached target at a fixed 44.1 kHz")
            << Run{.stored = quietFile, .rateMode = R::Rate44100, .expected = reached};
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
        const QString destination = m_dir.filePath(
            QStringLiteral("out/%1/Take 1.wav").arg(QLatin1StringView(QTest::currentDataTag())));
        const ProcessingResult result =
            service().process(item(run.stored, source), destination, wav24, settings(run.rateMode),
                              CancellationToken());
        run.expected.sourceFileName = run.source;
        run.expected.outputFileName = QFileInfo(destination).fileName();
        QCOMPARE(result, run.expected);
        // Converted into integer PCM, the float source is measured for peaks above
        // full scale.
        QCOMPARE(m_analyzer->calls(), run.stored ? 0 : 1);
        QCOMPARE(contents(destination), QByteArray("run 1"));

        const QStringList arguments = m_runner->calls().constLast();
        QCOMPARE(valueOf(arguments, QStringLiteral("-ar")), QString::number(run.rate));
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
        QVERIFY(RunChecks::write(previous, "previous output"));
        CancellationToken token;
        const QString &scenario = failure.scenario;
        if (scenario == u"exit 1")
            ffmpegWrites("partial", 1);
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

        QString thrown;
        try {
            service().process(item(std::nullopt),
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
            RunChecks::write(arguments.last(), "new output");
            RunChecks::write(destination, "the user's own");
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
            QCOMPARE(valueOf(m_runner->calls().constLast(), QStringLiteral("-af")),
                     QStringLiteral("volume=%1dB:precision=double").arg(gain, 0, 'f', 2));
        QVERIFY(result.measured);
        QCOMPARE(result.finalLUFS, std::optional(written.last().inputI));
        QCOMPARE(result.truePeak, std::optional(written.last().inputTP));
        QCOMPARE(result.appliedGain, std::optional(gain));
        QCOMPARE(result.outcome, outcome);
        QCOMPARE(contents(destination), "run " + QByteArray::number(written.size()));
    }

    // ffmpeg's -progress report: the newest position written, in microseconds;
    // a line counts once it has ended, and N/A comes before the first frame.
    void progress_data()
    {
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::addColumn<QList<qint64>>("positions"); // after each piece; -1 for none
        QTest::newRow("split inside the key and the number")
            << QByteArrayList{"out_ti", "me_us=25", "00000\nprogress=end\n"}
            << QList<qint64>{-1, -1, 2500000};
        QTest::newRow("N/A, negative, then two blocks in one piece")
            << QByteArrayList{"out_time_us=N/A\n", "out_time_us=-5\n",
                              "out_time_us=100\nprogress=continue\nout_time_us="
                              "200\n"}
            << QList<qint64>{-1, -1, 200};
    }

    void progress()
    {
        QFETCH(QByteArrayList, pieces);
        QFETCH(QList<qint64>, positions);
        FFmpegProgress progress;
        for (qsizetype i = 0; i < pieces.size(); ++i)
            QCOMPARE(progress.feed(pieces[i]).value_or(-1), positions[i]);
    }

    // Whose a hidden file is, and which name it stands for; a sweep of a
    // folder removes exactly those whose run was killed.
    void owners()
    {
        struct Case
        {
            QString name;
            bool abandoned;
            QString destination;
        };
        const QList<Case> cases{
            {PartFile::nameFor(u"take.wav"_qs), false, u"take.wav"_qs},
            {withOwner(1), false, u"take.wav"_qs}, // a live process
            {withOwner(deadPid()), true, u"take.wav"_qs},
            {withOwner(1, u"0badb007"_qs), true, u"take.wav"_qs}, // a live id from another boot
            {u".tbpart-7F3A6C21-0D44-4C4B-9A7E-2B1C55E0A9F1-take.wav"_qs, false, {}}, // not ours
            {u".tbpart-not-ours-take.wav"_qs, false, {}},
            {u"take.wav"_qs, false, {}},
        };
        const QString folder = m_dir.filePath(u"owners"_qs);
        QVERIFY(QDir().mkpath(folder));
        QStringList kept;
        for (const Case &c : cases) {
            QCOMPARE(PartFile::isAbandoned(c.name), c.abandoned);
            QCOMPARE(PartFile::destinationName(c.name), c.destination);
            QFile file(folder + u'/' + c.name);
            QVERIFY(file.open(QIODevice::WriteOnly));
            if (!c.abandoned)
                kept.append(c.name);
        }
        QCOMPARE(PartFile::removeAbandoned(folder), 2);
        kept.sort();
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name), kept);
        QVERIFY(QDir(folder).removeRecursively());
    }

    // As when the display connection is lost and Qt calls exit() from deep inside.
    void goneWhenTheProcessExitsWithoutUnwinding()
    {
        const QString folder = m_dir.filePath(u"exit"_qs);
        QVERIFY(QDir().mkpath(folder));
        const pid_t child = ::fork();
        if (child == 0) {
            auto *leaked = new PartFile(folder + u"/take.wav"_qs);
            std::exit(::access(encodedPath(leaked->path()).constData(), F_OK) == 0 ? 1 : 2);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(WEXITSTATUS(status), 1); // the hidden file was there until the exit
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    void refusalNamesTheFileTheUserWillHave()
    {
        const QString destination = m_dir.filePath(u"no such folder/take.wav"_qs);
        try {
            PartFile part(destination);
            QFAIL("a hidden file was made in a folder that is not there");
        } catch (const ProcessingError &error) {
            QCOMPARE(error,
                     ProcessingError::writeFailed(u"No such file or directory: "_qs + destination));
        }
    }

    // The words follow ffmpeg's and the system's own (English) wording, the
    // first that matches deciding; the details keep the facts.
    void translate_data()
    {
        QTest::addColumn<Error>("error");
        QTest::addColumn<QString>("message");
        QTest::addColumn<std::optional<QString>>("details");

        using P = ProcessingError;
        ffmpeg("ffmpeg: disk full, as ffmpeg capitalises it", 1,
               "[out#0/wav] Error writing trailer: No space left", L::DiskFullMessage);
        ffmpeg("ffmpeg: space before permission", 1, "Permission denied ... no space left",
               L::DiskFullMessage);
        ffmpeg("ffmpeg: permission", 1, "/out/x.wav: Permission denied", L::PermissionMessage);
        ffmpeg("ffmpeg: anything else", 183, "Invalid data found", L::DamagedMessage);
        said("write: no space", P::writeFailed, "No space left on device", L::DiskFullMessage);
        said("write: not enough space", P::writeFailed, "There is not enough space on the disk",
             L::DiskFullMessage);
        said("write: no permission", P::writeFailed, "You don't have permission to save",
             L::PermissionMessage);
        said("write: access denied", P::writeFailed, "Access denied", L::PermissionMessage);
        said("write: read-only disk", P::writeFailed, "Read-only file system: /out",
             L::ReadOnlyMessage);
        said("write: path too long", P::writeFailed, "File name too long: /out/x",
             L::PathTooLongMessage);
        said("write: anything else", P::writeFailed, "Input/output error: /out",
             L::WriteFailedMessage);
        said("source gone", P::sourceMissing, "/in/a.wav", L::SourceMissingMessage);
        said("source unreadable", P::sourceUnreadable, "Permission denied: /in/a.wav",
             L::SourceUnreadableMessage);
        said("analysis: always a damaged file, whatever it says", P::analysisFailed,
             "No space left on device", L::DamagedMessage);
        row("ffmpeg over its time", FFmpegError::timedOut(23), L::TookTooLongMessage,
            u"FFmpegError.timedOut(after: 23 s)"_qs);
        row("ffmpeg cannot start", FFmpegError::launchFailed(u"Permission denied"_qs),
            L::DamagedMessage, u"FFmpegError.launchFailed(\"Permission denied\")"_qs);
        row("same file", P::destinationEqualsSource(), L::SameFileSkippedMessage, {});
        row("cancelled", P::cancelled(), L::CancelledMessage, {});
    }

    void translate()
    {
        QFETCH(Error, error);
        QFETCH(QString, message);
        QFETCH(std::optional<QString>, details);
        QCOMPARE(ErrorTranslator::translate(*error, shownName), (FriendlyError{message, details}));
    }

    void speaksTheLanguageOfTheMoment()
    {
        const ProcessingError full = ProcessingError::writeFailed(u"No space left on device"_qs);
        LanguageFixture russianSystem({QStringLiteral("ru-RU"), QStringLiteral("en-US")});
        QCOMPARE(ErrorTranslator::translate(full, shownName).message,
                 QStringLiteral("Не удалось сохранить «Kick 01.wav».\nДиск заполнен — освободите "
                                "место и повторите."));
        russianSystem.manager().setSelection(AppLanguage::En);
        QVERIFY(ErrorTranslator::translate(full, shownName).message.startsWith(u"Could not save"));
    }
};

QTEST_GUILESS_MAIN(LoudnessServicesTest)
#include "LoudnessServicesTest.moc"

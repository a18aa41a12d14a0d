// SPDX-License-Identifier: GPL-3.0-or-later
//
// The processing pass's command lines, results and file handling, with a stand-in ffmpeg.
#include "engine/LoudnessProcessingService.h"

#include "FakeFFmpegRunner.h"
#include "ScriptedAnalyzer.h"
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "engine/AudioMetadata.h"
#include "engine/CancellationToken.h"
#include "engine/PartFile.h"
#include "engine/ProcessingError.h"
#include "engine/SystemError.h"
#include "model/FileStamp.h"
#include "model/StandardPath.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <limits>

namespace {

const LoudnessMeasurement quietFile{-20.5, -8.25, 7.1, -31.0, 0.3};
// Too loud a peak for -14 LUFS under -1 dBTP: limited to -18 LUFS.
const LoudnessMeasurement peakyFile{-20.0, -3.0, 7.1, -31.0, 0.3};
const LoudnessMeasurement silentFile{-std::numeric_limits<double>::infinity(),
                                     -std::numeric_limits<double>::infinity(), 0, -70,
                                     std::numeric_limits<double>::infinity()};

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QStringList temporaryFilesBelow(const QString &folder)
{
    QStringList found;
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names)
        if (name.startsWith(PartFile::prefix))
            found << name;
    return found;
}

ProcessingSettings streamingSettings()
{
    ProcessingSettings settings;
    settings.selectedPreset = *LoudnessPreset::builtIn(u"streaming");
    settings.sampleRateMode = SampleRateMode::Rate48000;
    return settings;
}

} // namespace

Q_DECLARE_METATYPE(QList<LoudnessMeasurement>)

class LoudnessProcessingServiceTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<FakeFFmpegRunner> m_runner;
    std::shared_ptr<ScriptedAnalyzer> m_analyzer;
    QString m_source;

    LoudnessProcessingService service() const { return {m_runner, m_analyzer}; }

    AudioFileItem item(std::optional<LoudnessMeasurement> measurement) const
    {
        return {QUuid::createUuid(),
                m_source,
                QStringLiteral("Take 1.wav"),
                SourceAudioFormat::Wav,
                AudioCategory::Other,
                std::nullopt,
                measurement,
                OutputFormatMode::KeepOriginal,
                ProcessingStatus::ready(),
                std::nullopt,
                std::nullopt,
                std::nullopt};
    }

    // ffmpeg's part: write the file it was given last, then exit.
    void ffmpegWrites(const QByteArray &bytes, int exitCode = 0,
                      CancellationToken *cancelDuringRun = nullptr)
    {
        m_runner->respond = [=](const QStringList &arguments) {
            QFile output(arguments.last());
            if (output.open(QIODevice::WriteOnly))
                output.write(bytes);
            if (cancelDuringRun)
                cancelDuringRun->cancel();
            return FFmpegResult{exitCode, {}, QStringLiteral("ffmpeg's complaint")};
        };
    }

    QStringList lastArguments() const { return m_runner->calls().last().arguments; }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(TestEnvironment::commaLocaleActiveAsRequested());
        m_source = m_dir.filePath(QStringLiteral("Take 1.wav"));
        QVERIFY(TestAudio::writeWav(m_source, 44100, 2, {TestAudio::Segment::sine(-20, 0.5)}));
    }

    void init()
    {
        m_runner = std::make_shared<FakeFFmpegRunner>();
        m_analyzer = std::make_shared<ScriptedAnalyzer>();
        ffmpegWrites("new output");
    }

    void cleanup()
    {
        QVERIFY(temporaryFilesBelow(m_dir.path()).isEmpty());
        QVERIFY(temporaryFilesBelow(m_dir.filePath(QStringLiteral("out"))).isEmpty());
    }

    void commandLines_data()
    {
        QTest::addColumn<bool>("normalize");
        QTest::addColumn<std::optional<LoudnessMeasurement>>("measurement");
        QTest::addColumn<SampleRateMode>("rateMode");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QStringList>("codec");
        QTest::addColumn<QStringList>("expectedMiddle");

        const QStringList pcm24{QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")};
        const QStringList lame{QStringLiteral("-c:a"), QStringLiteral("libmp3lame"),
                               QStringLiteral("-q:a"), QStringLiteral("2")};
        const QString filter =
            QStringLiteral("loudnorm=I=-14.00:TP=-1.00:LRA=7.10:measured_I=-20.50:measured_LRA=7."
                           "10:measured_TP=-8.25:"
                           "measured_thresh=-31.00:offset=0.30:linear=true:print_format=summary");

        QTest::newRow("conversion to 24-bit wav")
            << false << std::optional<LoudnessMeasurement>() << SampleRateMode::Rate48000 << "wav"
            << pcm24
            << (QStringList{QStringLiteral("-ar"), QStringLiteral("48000"),
                            QStringLiteral("-dither_method"), QStringLiteral("triangular")} +
                pcm24 + QStringList{QStringLiteral("-vn")});
        QTest::newRow("normalising to mp3 keeps cover art")
            << true << std::optional(quietFile) << SampleRateMode::Rate44100 << "mp3" << lame
            << (QStringList{QStringLiteral("-af"), filter, QStringLiteral("-ar"),
                            QStringLiteral("44100")} +
                lame + QStringList{QStringLiteral("-c:v"), QStringLiteral("copy")});
        QTest::newRow("source rate read from the file")
            << true << std::optional(quietFile) << SampleRateMode::PreserveOriginal << "wav"
            << pcm24
            << (QStringList{QStringLiteral("-af"), filter, QStringLiteral("-ar"),
                            QStringLiteral("44100"), QStringLiteral("-dither_method"),
                            QStringLiteral("triangular")} +
                pcm24 + QStringList{QStringLiteral("-vn")});
        QTest::newRow("silence converts without a filter")
            << true << std::optional(silentFile) << SampleRateMode::Rate48000 << "wav" << pcm24
            << (QStringList{QStringLiteral("-ar"), QStringLiteral("48000"),
                            QStringLiteral("-dither_method"), QStringLiteral("triangular")} +
                pcm24 + QStringList{QStringLiteral("-vn")});
    }

    void commandLines()
    {
        QFETCH(bool, normalize);
        QFETCH(std::optional<LoudnessMeasurement>, measurement);
        QFETCH(SampleRateMode, rateMode);
        QFETCH(QString, extension);
        QFETCH(QStringList, codec);
        QFETCH(QStringList, expectedMiddle);

        ProcessingSettings settings = streamingSettings();
        settings.sampleRateMode = SampleRateMode::PreserveOriginal; // predictions are exact
        settings.normalizeLoudness = normalize;
        settings.sampleRateMode = rateMode;
        const QString destination = m_dir.filePath(QStringLiteral("out/sub/Take 1.") + extension);
        service().process(item(measurement), destination, {extension, codec}, settings,
                          CancellationToken());

        QStringList arguments = lastArguments();
        const QString temporary = arguments.takeLast();
        // Tags a gain makes wrong are cleared, after everything else, whenever one is applied.
        const qsizetype clearing = arguments.indexOf(QStringLiteral("-metadata"));
        const QStringList cleared = clearing < 0 ? QStringList() : arguments.mid(clearing);
        arguments = arguments.first(clearing < 0 ? arguments.size() : clearing);
        QCOMPARE(cleared.contains(QStringLiteral("REPLAYGAIN_TRACK_GAIN=")),
                 arguments.contains(QStringLiteral("-af")));
        QCOMPARE(arguments,
                 QStringList({QStringLiteral("-y"), QStringLiteral("-hide_banner"),
                              QStringLiteral("-nostats"), QStringLiteral("-i"), m_source}) +
                     expectedMiddle);
        QCOMPARE(QFileInfo(temporary).path(), QFileInfo(destination).path());
        QVERIFY2(QRegularExpression(
                     QStringLiteral("^\\.tbpart-[0-9]+-[0-9a-f]{8}-[0-9a-f]{8}-Take 1\\.") +
                     extension + u'$')
                     .match(QFileInfo(temporary).fileName())
                     .hasMatch(),
                 qPrintable(temporary));
        QCOMPARE(contents(destination), QByteArray("new output"));
        // The float source converted into integer PCM is measured for peaks above full scale.
        QCOMPARE(m_analyzer->calls(), normalize ? 0 : 1);
    }

    void unreadableSourceRateFallsBackTo48k()
    {
        const QString notAudio = m_dir.filePath(QStringLiteral("notes.wav"));
        write(notAudio, "plain text");
        ProcessingSettings settings = streamingSettings();
        settings.sampleRateMode = SampleRateMode::PreserveOriginal;
        AudioFileItem textItem = item(quietFile);
        textItem.sourcePath = notAudio;
        service().process(
            textItem, m_dir.filePath(QStringLiteral("out/notes.wav")),
            {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s16le")}},
            settings, CancellationToken());
        const QStringList arguments = lastArguments();
        QCOMPARE(arguments.at(arguments.indexOf(QStringLiteral("-ar")) + 1),
                 QStringLiteral("48000"));
    }

    void results_data()
    {
        QTest::addColumn<bool>("normalize");
        QTest::addColumn<std::optional<LoudnessMeasurement>>("stored");
        QTest::addColumn<LoudnessMeasurement>("measuredNow");
        QTest::addColumn<ProcessingResult>("expected");

        const std::optional<LoudnessMeasurement> none;
        const QString name = QStringLiteral("Take 1.wav");
        const QString tail =
            QStringLiteral(" \u2192 could not reach target without exceeding the true peak "
                           "ceiling. Normalized to the highest safe level.");
        using O = ProcessingOutcome;
        QTest::newRow("conversion has no figures")
            << false << none << quietFile
            << ProcessingResult{.sourceFileName = name, .outputFileName = name};
        QTest::newRow("reached target") << true << std::optional(quietFile) << quietFile
                                        << ProcessingResult{.sourceFileName = name,
                                                            .outputFileName = name,
                                                            .originalLUFS = -20.5,
                                                            .finalLUFS = -14.0,
                                                            .appliedGain = 6.5,
                                                            .truePeak = -1.75};
        // Held back by the true-peak ceiling; the warning quotes the loudness it started from.
        const auto limited = [&](const QString &target) {
            return ProcessingResult{.sourceFileName = name,
                                    .outputFileName = name,
                                    .originalLUFS = -20.0,
                                    .finalLUFS = -18.0,
                                    .appliedGain = 2.0,
                                    .truePeak = -1.0,
                                    .outcome = O::PeakLimited,
                                    .warningMessage = QStringLiteral("Target ") + target + tail};
        };
        QTest::newRow("limited, stored loudness in the warning")
            << true << std::optional(peakyFile) << peakyFile << limited(u"-20.00"_qs);
        QTest::newRow("limited, measured during the call: 0.00 in the warning")
            << true << none << peakyFile << limited(u"0.00"_qs);
        QTest::newRow("silence: unity gain, no figures that are not finite")
            << true << std::optional(silentFile) << silentFile
            << ProcessingResult{.sourceFileName = name, .outputFileName = name, .appliedGain = 0.0};
    }

    void results()
    {
        QFETCH(bool, normalize);
        QFETCH(std::optional<LoudnessMeasurement>, stored);
        QFETCH(LoudnessMeasurement, measuredNow);
        QFETCH(ProcessingResult, expected);

        m_analyzer->respond = [=](const QString &, const CancellationToken &) {
            return measuredNow;
        };
        ProcessingSettings settings = streamingSettings();
        settings.sampleRateMode = SampleRateMode::PreserveOriginal; // predictions are exact
        settings.normalizeLoudness = normalize;
        const ProcessingResult result = service().process(
            item(stored),
            m_dir.filePath(QStringLiteral("results/%1/Take 1.wav")
                               .arg(QLatin1StringView(QTest::currentDataTag()))),
            {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}},
            settings, CancellationToken());
        QCOMPARE(result.outcome, expected.outcome);
        QCOMPARE(result.warningMessage, expected.warningMessage);
        QCOMPARE(result, expected);
        // Converted, the float source is measured for peaks above full scale.
        QCOMPARE(m_analyzer->calls(), normalize && stored ? 0 : 1);
    }

    // What each failure leaves behind: an existing output survives anything short of success.
    void failures_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<ProcessingError::Kind>("kind");
        QTest::addColumn<int>("ffmpegRuns");

        using K = ProcessingError::Kind;
        QTest::newRow("ffmpeg fails") << "exit 1" << K::FFmpegFailed << 1;
        QTest::newRow("cancelled while ffmpeg ran, though it exited 0")
            << "cancel in run" << K::Cancelled << 1;
        QTest::newRow("cancelled during measuring") << "cancel in analysis" << K::Cancelled << 0;
        QTest::newRow("measuring fails") << "analysis fails" << K::AnalysisFailed << 0;
        QTest::newRow("a file where the folder must go")
            << "file in the way" << K::WriteFailed << 0;
    }

    void failures()
    {
        QFETCH(QString, scenario);
        QFETCH(ProcessingError::Kind, kind);
        QFETCH(int, ffmpegRuns);

        const QString folder = m_dir.filePath(QStringLiteral("out"));
        QVERIFY(QDir().mkpath(folder));
        const QString previous = folder + QStringLiteral("/Take 1.wav");
        QString destination = previous;
        write(previous, "previous output");

        CancellationToken token;
        if (scenario == u"exit 1")
            ffmpegWrites("partial", 1);
        if (scenario == u"cancel in run")
            ffmpegWrites("complete", 0, &token);
        if (scenario == u"cancel in analysis")
            m_analyzer->respond = [&token](const QString &, const CancellationToken &) {
                token.cancel();
                return quietFile;
            };
        if (scenario == u"analysis fails")
            m_analyzer->respond = [](const QString &,
                                     const CancellationToken &) -> LoudnessMeasurement {
                throw FFmpegError::binaryNotFound();
            };
        if (scenario == u"file in the way")
            destination = previous + QStringLiteral("/Take 1.wav");

        try {
            service().process(
                item(std::nullopt), destination,
                {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}},
                streamingSettings(), token);
            QFAIL("expected a failure");
        } catch (const ProcessingError &error) {
            QCOMPARE(error.kind(), kind);
            if (kind == ProcessingError::Kind::FFmpegFailed)
                QCOMPARE(error,
                         ProcessingError::ffmpegFailed(1, QStringLiteral("ffmpeg's complaint")));
            if (kind == ProcessingError::Kind::AnalysisFailed)
                QCOMPARE(error.text(), QStringLiteral("FFmpegError.binaryNotFound"));
            if (kind == ProcessingError::Kind::WriteFailed)
                QVERIFY2(error.text().startsWith(systemErrorText(ENOTDIR)),
                         qPrintable(error.text()));
        }
        QCOMPARE(m_runner->calls().size(), ffmpegRuns);
        QCOMPARE(contents(previous), QByteArray("previous output"));
        QVERIFY(QFile::remove(previous));
    }

    void destinationThatIsTheSourceIsRefused_data()
    {
        QTest::addColumn<QString>("spelling");
        QTest::newRow("same path") << QStringLiteral("%1/Take 1.wav");
        QTest::newRow("through dot") << QStringLiteral("%1/./Take 1.wav");
        QTest::newRow("through dot-dot") << QStringLiteral("%1/out/../Take 1.wav");
    }

    void destinationThatIsTheSourceIsRefused()
    {
        QFETCH(QString, spelling);
        const QByteArray before = contents(m_source);
        for (bool normalize : {false, true}) {
            ProcessingSettings settings = streamingSettings();
            settings.normalizeLoudness = normalize;
            try {
                service().process(
                    item(std::nullopt), spelling.arg(m_dir.path()),
                    {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}},
                    settings, CancellationToken());
                QFAIL("expected a refusal");
            } catch (const ProcessingError &error) {
                QCOMPARE(error, ProcessingError::destinationEqualsSource());
            }
        }
        QCOMPARE(m_runner->calls().size(), 0);
        QCOMPARE(m_analyzer->calls(), 0);
        QCOMPARE(contents(m_source), before);
    }

    void folderThatCannotBeCreatedIsAWriteFailure()
    {
        const QString blocker = m_dir.filePath(QStringLiteral("blocker"));
        write(blocker, "a file where a folder should go");
        try {
            service().process(
                item(quietFile), blocker + QStringLiteral("/sub/Take 1.wav"),
                {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}},
                streamingSettings(), CancellationToken());
            QFAIL("expected a write failure");
        } catch (const ProcessingError &error) {
            QCOMPARE(error.kind(), ProcessingError::Kind::WriteFailed);
            QVERIFY2(error.text().startsWith(systemErrorText(ENOTDIR)), qPrintable(error.text()));
        }
        QCOMPARE(m_runner->calls().size(), 0);
    }

    void runnerErrorsPassThroughUnchanged()
    {
        m_runner->respond = [](const QStringList &) -> FFmpegResult {
            throw FFmpegError::launchFailed(QStringLiteral("Permission denied"));
        };
        try {
            service().process(
                item(quietFile), m_dir.filePath(QStringLiteral("out/Take 1.wav")),
                {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}},
                streamingSettings(), CancellationToken());
            QFAIL("expected the runner's error");
        } catch (const FFmpegError &error) {
            QCOMPARE(error, FFmpegError::launchFailed(QStringLiteral("Permission denied")));
        }
    }

    // The file measured earlier is used only while it is unchanged; a name
    // taken while ffmpeg wrote gives way to the next free one.
    void guardsJustBeforeWriting_data()
    {
        QTest::addColumn<bool>("sourceChanged");
        QTest::addColumn<bool>("nameTakenMeanwhile");
        QTest::newRow("unchanged source, free name") << false << false;
        QTest::newRow("source rewritten since measured") << true << false;
        QTest::newRow("output name taken while writing") << false << true;
    }

    void guardsJustBeforeWriting()
    {
        QFETCH(bool, sourceChanged);
        QFETCH(bool, nameTakenMeanwhile);
        const QString folder =
            m_dir.filePath(QStringLiteral("guards/") + QLatin1StringView(QTest::currentDataTag()));
        const QString source = folder + QStringLiteral("/take.wav");
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(TestAudio::writeWav(source, 44100, 2, {TestAudio::Segment::sine(-20, 0.5)}));
        AudioFileItem stored = item(quietFile);
        stored.sourcePath = source;
        stored.measuredStamp = AudioMetadata::stamp(source);
        if (sourceChanged)
            QVERIFY(TestAudio::writeWav(source, 44100, 2, {TestAudio::Segment::sine(-50, 0.7)}));
        const LoudnessMeasurement now{-50.0, -44.0, 1.0, -60.0, 0.0};
        m_analyzer->respond = [=](const QString &, const CancellationToken &) { return now; };
        const QString destination = folder + QStringLiteral("/out/take.wav");
        m_runner->respond = [=](const QStringList &arguments) {
            write(arguments.last(), "new output");
            if (nameTakenMeanwhile)
                write(destination, "the user's own");
            return FFmpegResult{};
        };

        ProcessingSettings settings = streamingSettings();
        settings.sampleRateMode = SampleRateMode::PreserveOriginal;
        const ProcessingResult result = service().process(
            stored, destination,
            {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}},
            settings, CancellationToken());
        QCOMPARE(m_analyzer->calls(), sourceChanged ? 1 : 0);
        QCOMPARE(result.originalLUFS, sourceChanged ? now.inputI : quietFile.inputI);
        const QString written =
            nameTakenMeanwhile ? QStringLiteral("take 2.wav") : QStringLiteral("take.wav");
        QCOMPARE(result.outputFileName, written);
        QCOMPARE(contents(folder + QStringLiteral("/out/") + written), QByteArray("new output"));
        if (nameTakenMeanwhile)
            QCOMPARE(contents(destination), QByteArray("the user's own"));
        QVERIFY(temporaryFilesBelow(folder + QStringLiteral("/out")).isEmpty());
    }

    // Another rate (here 44.1 to 48 kHz) makes the prediction an estimate:
    // the written file is measured and, when it misses, written once more.
    void writtenFileIsMeasuredWhereItCanDiffer_data()
    {
        QTest::addColumn<QList<LoudnessMeasurement>>("written");
        QTest::addColumn<QString>("secondFilter");
        QTest::addColumn<double>("gain");
        QTest::addColumn<ProcessingOutcome>("outcome");
        const auto m = [](double i, double tp) { return LoudnessMeasurement{i, tp, 3, i - 10, 0}; };
        using O = ProcessingOutcome;
        // Planned: 6.5 dB, -14 LUFS, -1.75 dBTP against a -1 dBTP ceiling.
        QTest::newRow("on target: written once")
            << QList{m(-14.05, -1.8)} << QString() << 6.5 << O::Success;
        QTest::newRow("0.6 LU short: raised")
            << QList{m(-14.6, -2.3), m(-14.02, -1.72)}
            << QStringLiteral("volume=7.10dB:precision=double") << 7.1 << O::Success;
        QTest::newRow("over the ceiling: lowered by the overshoot and a margin")
            << QList{m(-14.0, -0.7), m(-14.5, -1.2)}
            << QStringLiteral("volume=6.00dB:precision=double") << 6.0 << O::PeakLimited;
        QTest::newRow("a second correction at most; still over: limited, as measured")
            << QList{m(-14.0, -0.7), m(-14.5, -0.8), m(-14.9, -0.9)}
            << QStringLiteral("volume=5.60dB:precision=double") << 5.6 << O::PeakLimited;
        QTest::newRow("the second correction scaled by the encoder's response")
            << QList{m(-14.6, -2.3), m(-13.8, -1.5), m(-14.03, -1.73)}
            << QStringLiteral("volume=6.95dB:precision=double") << 6.95 << O::Success;
    }

    void writtenFileIsMeasuredWhereItCanDiffer()
    {
        QFETCH(QList<LoudnessMeasurement>, written);
        QFETCH(QString, secondFilter);
        QFETCH(double, gain);
        QFETCH(ProcessingOutcome, outcome);
        auto answers = std::make_shared<QList<LoudnessMeasurement>>(written);
        QStringList measured;
        m_analyzer->respond = [answers, &measured](const QString &path, const CancellationToken &) {
            measured.append(path);
            return answers->takeFirst();
        };
        const QString destination =
            m_dir.filePath(QStringLiteral("verified/%1/Take 1.wav")
                               .arg(QLatin1StringView(QTest::currentDataTag())));
        const ProcessingResult result = service().process(
            item(quietFile), destination,
            {QStringLiteral("wav"), {QStringLiteral("-c:a"), QStringLiteral("pcm_s24le")}},
            streamingSettings(), CancellationToken());

        QCOMPARE(measured.size(), written.size());
        for (const QString &path : std::as_const(measured))
            QVERIFY2(fileNameOf(path).startsWith(PartFile::prefix), qPrintable(path));
        QCOMPARE(m_runner->calls().size(), written.size());
        if (!secondFilter.isEmpty()) {
            const QStringList second = m_runner->calls().last().arguments;
            QCOMPARE(second.at(second.indexOf(QStringLiteral("-af")) + 1), secondFilter);
        }
        QVERIFY(result.measured);
        QCOMPARE(result.finalLUFS, std::optional(written.last().inputI));
        QCOMPARE(result.truePeak, std::optional(written.last().inputTP));
        QCOMPARE(result.appliedGain, std::optional(gain));
        QCOMPARE(result.outcome, outcome);
        QCOMPARE(contents(destination), QByteArray("new output"));
    }

    void sourceGoneIsSaidSo()
    {
        AudioFileItem gone = item(quietFile);
        gone.sourcePath = m_dir.filePath(QStringLiteral("moved away.wav"));
        try {
            service().process(gone, m_dir.filePath(QStringLiteral("out/moved away.wav")),
                              {QStringLiteral("wav"), {}}, streamingSettings(),
                              CancellationToken());
            QFAIL("a missing source was processed");
        } catch (const ProcessingError &error) {
            QCOMPARE(error, ProcessingError::sourceMissing(gone.sourcePath));
        }
        QCOMPARE(m_runner->calls().size(), 0);
    }
};

QTEST_GUILESS_MAIN(LoudnessProcessingServiceTest)
#include "LoudnessProcessingServiceTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whatever the files, the disk or the timing: sources stay as they were, no
// part file, ffmpeg or unreaped child is left, every failure says in the
// interface's words what went wrong with which file, and the other files go on
// to their proper end. TONBROOK_STRESS=1 (make stress) adds the two-hour file
// and runs the timing cases a hundred times each with seeded random moments.
#include "RunChecks.h"
#include "app/MainViewModel.h"
#include "engine/FFmpegRunner.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/PartFile.h"
#include "engine/SystemError.h"
#include "localization/L.h"
#include "model/LoudnessPreset.h"

#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <csignal>
#include <sys/mount.h>
#include <sys/stat.h>

using Segment = TestAudio::Segment;

namespace {

bool stress()
{
    return qEnvironmentVariableIntValue("TONBROOK_STRESS") == 1;
}

enum class Expect
{
    Processed, // done or warning, with its output written
    Failed,    // failed, with a translated message and details
    Either,    // ffmpeg may read some of it or none; either end is honest
    Untouched, // still ready: the run stopped before it for a reason not its own
    Stopped,   // anything but failed or still going: the user stopped the run
};

struct Input
{
    QString name;
    Expect expect;
    std::function<bool(const QString &path)> make = {};
};

// The messages a failure may carry, in the interface's words.
QStringList failureMessages(const QString &fileName)
{
    QStringList messages;
    for (const auto message : {L::DamagedMessage, L::PermissionMessage, L::DiskFullMessage,
                               L::WriteFailedMessage, L::ReadOnlyMessage, L::SourceMissingMessage,
                               L::SourceUnreadableMessage, L::TookTooLongMessage})
        messages.append(L::text(message, displayedPath(fileName)));
    return messages;
}

// A take of noise and a tone in the container the extension names.
bool take(const QString &path, double seconds, int rate = 48000, int channels = 2)
{
    return RunChecks::writeAudio(
        path, {Segment::noise(-18, seconds * 0.6), Segment::sine(-18, seconds * 0.4, 330)}, rate,
        channels);
}

using Path = const QString &;

// Makes a WAV take, keeps its first `keep` bytes (all: -1), adds the tail and
// rewrites 32-bit fields of its header.
std::function<bool(Path)> lying(double seconds, qsizetype keep,
                                std::vector<std::pair<int, quint32>> fields, QByteArray tail = {})
{
    return [=](Path path) {
        QByteArray bytes = take(path, seconds) ? RunChecks::contents(path) : QByteArray();
        bytes = (keep < 0 ? bytes : bytes.left(keep)) + tail;
        for (const auto &[offset, value] : fields)
            if (bytes.size() >= offset + 4)
                qToLittleEndian(value, bytes.data() + offset);
        return bytes.size() > 40 && RunChecks::write(path, bytes);
    };
}

// Inputs that must neither crash, hang nor stop the others, with what each comes to.
QList<Input> hostileFiles()
{
    const auto audio = [](double seconds, int rate = 48000, int channels = 2) {
        return [=](Path path) { return take(path, seconds, rate, channels); };
    };
    const auto bytes = [](const QByteArray &data) {
        return [=](Path path) { return RunChecks::write(path, data); };
    };
    const auto halved = [](Path path) {
        return take(path, 3) &&
               RunChecks::write(path, RunChecks::contents(path).left(QFileInfo(path).size() / 2));
    };
    QByteArray noise(65536, Qt::Uninitialized);
    QRandomGenerator(7).fillRange(reinterpret_cast<quint32 *>(noise.data()), noise.size() / 4);
    QList<Input> inputs{
        {u"garbage/empty.wav"_qs, Expect::Failed, bytes({})},
        {u"garbage/notes.wav"_qs, Expect::Failed, bytes("Scene 3: rain, then thunder.\n")},
        {u"garbage/random.aiff"_qs, Expect::Failed, bytes(noise)},
        {u"garbage/cover.mp3"_qs, Expect::Failed,
         bytes(QByteArray::fromBase64(
             "iVBORw0KGgoAAAANSUhEUgAAAAgAAAAICAIAAABLbSncAAAAEElEQVR42mNgaGj"
             "AjoaWBADiMEABsMU5DQAAAABJRU5ErkJggg=="))}, // a PNG
        // Cut in half; the index of an M4A sits at its end, so nothing of it can be read.
        {u"cut/cut.wav"_qs, Expect::Processed, halved},
        {u"cut/cut.mp3"_qs, Expect::Processed, halved},
        {u"cut/cut.m4a"_qs, Expect::Failed, halved},
        {u"cut/header only.wav"_qs, Expect::Either, lying(1, 44, {})},
        {u"headers/claims 4 GB.wav"_qs, Expect::Processed, lying(2, -1, {{4, ~15u}, {40, ~31u}})},
        {u"headers/absurd rate.wav"_qs, Expect::Either, lying(1, -1, {{24, ~15u}})},
        // 100 KB of 16-bit mono that claim a day of audio at 1 Hz.
        {u"headers/one hertz.wav"_qs, Expect::Failed,
         lying(1, 44, {{4, 102436}, {20, 0x10001}, {24, 1}, {28, 2}, {32, 0x100002}, {40, 102400}},
               QByteArray(102400, 0))},
        {u"shapes/eight channels.wav"_qs, Expect::Processed, audio(2, 48000, 8)},
        {u"shapes/mono.aiff"_qs, Expect::Processed, audio(2, 44100, 1)},
        {u"shapes/telephone.wav"_qs, Expect::Processed, audio(2, 8000, 1)},
        {u"shapes/hi-res.wav"_qs, Expect::Processed, audio(2, 192000)},
        {u"shapes/blip 10 ms.wav"_qs, Expect::Processed, audio(0.01)},
        // Permission bits mean nothing to root: the run is made as nobody.
        {u"unreadable/locked.wav"_qs, Expect::Failed,
         [](Path path) { return take(path, 1) && QFile::setPermissions(path, {}); }},
    };
    // The last is as long as a name may be: 255 bytes.
    for (const QString &name : QStringList{
             u"say \"hello\" and 'bye'.wav"_qs, u"back\\slash.wav"_qs, u"two\nlines.wav"_qs,
             u"-leading dash.wav"_qs, u"100%, loud & clear.wav"_qs, u"headphones \U0001F3A7.wav"_qs,
             u"Гроза над рекой.wav"_qs, QString(251, u'n') + u".wav"_qs})
        inputs.append({u"names/"_qs + name, Expect::Processed, audio(0.5)});
    // Bytes that are not UTF-8, which only the system's calls keep.
    inputs.append(
        {u"names/"_qs + decodedPath("caf\xe9 \xff.wav"), Expect::Processed, [](Path path) {
             const QString plain = QFileInfo(path).path() + u"/plain.wav"_qs;
             return take(plain, 0.5) && ::rename(encodedPath(plain), encodedPath(path)) == 0;
         }});
    if (stress())
        inputs.append({u"two hours.wav"_qs, Expect::Processed, [](const QString &path) {
                           return RunChecks::writeAudio(
                               path, {Segment::noise(-30, 3600), Segment::sine(-20, 3600, 200)},
                               8000, 1);
                       }});
    return inputs;
}

} // namespace

class ReliabilityTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString path(const QString &relative) const { return m_dir.filePath(relative); }

    // Takes written once: `count` of them, the first `seconds` long, each next `step` longer.
    QString takes(const QString &folder, int count, double seconds, double step)
    {
        const QString in = path(folder);
        if (!QFileInfo::exists(in))
            for (int i = 0; i < count; ++i)
                take(u"%1/take %2.wav"_qs.arg(in).arg(i + 1), seconds + step * i);
        return in;
    }

    // The controller on the real services and the bundled ffmpeg, writing into the folder.
    std::unique_ptr<MainViewModel> controller(const QString &output)
    {
        const auto runner = [] {
            return std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath());
        };
        auto vm = std::make_unique<MainViewModel>(
            AppServices{.bookmarkStore = OutputFolderBookmarkStore(std::make_shared<QSettings>(
                            path(u"preferences.ini"_qs), QSettings::IniFormat)),
                        .analysisService = std::make_shared<LoudnessAnalysisService>(runner()),
                        .processingService = std::make_shared<LoudnessProcessingService>(
                            runner(), std::make_shared<LoudnessAnalysisService>(runner()))});
        ProcessingSettings settings;
        settings.selectedPreset = *LoudnessPreset::builtIn(u"podcast");
        settings.outputFolder = output;
        settings.revealInFinderWhenComplete = false;
        vm->setSettings(settings);
        return vm;
    }

    // What must hold after every run, whatever happened in it.
    void checkAfterRun(const QMap<QString, QByteArray> &sources, const QStringList &roots)
    {
        QVERIFY2(RunChecks::changedSince(sources).isEmpty(),
                 qPrintable(RunChecks::changedSince(sources).join(u", ")));
        for (const QString &root : roots) {
            QTRY_VERIFY2_WITH_TIMEOUT(RunChecks::partFilesBelow(root).isEmpty(),
                                      qPrintable(RunChecks::partFilesBelow(root).join(u", ")),
                                      5000);
            QTRY_COMPARE_WITH_TIMEOUT(RunChecks::ffmpegProcessesMentioning(root), 0, 5000);
        }
        QTRY_COMPARE_WITH_TIMEOUT(TestEnvironment::childProcessIds(), QList<qint64>(), 5000);
    }

    // Every file of a --json run was printed once and came to its proper end:
    // what was written is there, at its source's place in the output folder
    // (`out`, empty where the case removes what was written); what failed says why.
    void checkOutcomes(const QByteArray &json, const QString &in, const QList<Input> &inputs,
                       const QString &out)
    {
        const QMap<QString, QJsonObject> printed = RunChecks::printedBy(json, u"source"_qs);
        QCOMPARE(json.count('\n'), printed.size());
        for (const Input &input : inputs) {
            const QJsonObject entry = printed.value(in + u'/' + input.name);
            const QString status = entry.value(u"status").toString();
            const QString message = entry.value(u"message").toString();
            const QString why = displayedPath(input.name).replace(u'\n', u"\\n"_qs) + u' ' +
                                status + u' ' + message + u' ' +
                                entry.value(u"errorDetails").toString().left(300);
            QVERIFY2(!entry.isEmpty(), qPrintable(why));
            const bool processed = status == u"done" || status == u"warning";
            const bool failed = status == u"failed";
            QVERIFY2(input.expect == Expect::Processed ? processed
                     : input.expect == Expect::Failed  ? failed
                     : input.expect == Expect::Either  ? processed || failed
                     : input.expect == Expect::Untouched
                         ? status == u"ready"
                         : !failed && status != u"analyzing" && status != u"processing",
                     qPrintable(why));
            struct stat written
            {};
            if (processed && !out.isEmpty()) {
                QCOMPARE(entry.value(u"output").toString(), out + u'/' + input.name);
                QVERIFY2(::stat(encodedPath(out + u'/' + input.name), &written) == 0 &&
                             written.st_size > 0,
                         qPrintable(why));
            } else if (failed) {
                QVERIFY2(failureMessages(fileNameOf(input.name)).contains(message),
                         qPrintable(why));
                QVERIFY2(!entry.value(u"errorDetails").toString().isEmpty(), qPrintable(why));
                QVERIFY2(entry.value(u"output").isNull(), qPrintable(why));
            }
        }
    }

    // No job still running: every ffmpeg gone and every item settled.
    static void settle(const MainViewModel &vm)
    {
        const auto busy = [&vm] {
            return std::any_of(vm.queue().begin(), vm.queue().end(), [](const auto &item) {
                return item.status.kind() == ProcessingStatus::Kind::Analyzing ||
                       item.status.kind() == ProcessingStatus::Kind::Processing;
            });
        };
        QTRY_VERIFY_WITH_TIMEOUT(
            !vm.isAnalyzing() && !busy() && TestEnvironment::childProcessIds().isEmpty(), 20000);
    }

    // Items of good inputs after any run: never failed; what was written is
    // there, complete; nothing else was written.
    static void checkGoodItems(const MainViewModel &vm, const QString &output)
    {
        QStringList expected;
        for (const AudioFileItem &item : vm.queue()) {
            const auto kind = item.status.kind();
            QVERIFY2(kind != ProcessingStatus::Kind::Failed,
                     qPrintable(item.relativePath + u' ' + item.status.message()));
            if (kind == ProcessingStatus::Kind::Done || kind == ProcessingStatus::Kind::Warning)
                expected.append(item.result ? item.result->outputFileName : QString());
        }
        expected.sort();
        QCOMPARE(RunChecks::filesBelow(output), expected);
    }

private Q_SLOTS:
    void initTestCase()
    {
        // Open to the unprivileged runs below.
        QVERIFY(QFile::setPermissions(m_dir.path(), QFile::permissions(m_dir.path()) |
                                                        QFile::ReadOther | QFile::ExeOther));
    }

    // Each file comes to its end, as nobody; the report agrees with what was printed.
    void hostileInputs()
    {
        const QString in = path(u"hostile"_qs);
        const QString out = path(u"hostile-out"_qs);
        const QList<Input> inputs = hostileFiles();
        for (const Input &input : inputs)
            QVERIFY2(input.make(in + u'/' + input.name), qPrintable(input.name));
        const auto sources = RunChecks::snapshot(in);
        QVERIFY(QDir().mkpath(out) && QFile::setPermissions(out, QFile::Permissions(0x7777)));
        const RunChecks::CliRun run =
            RunChecks::runCli({u"--json"_qs, u"--preset"_qs, u"podcast"_qs, u"-o"_qs, out,
                               u"--report"_qs, out + u"/report.csv"_qs, in},
                              stress() ? 1700000 : 170000, RunChecks::cliPath(), true);
        QVERIFY2(run.finished, qPrintable(u"crashed or hung: "_qs + run.err));
        QVERIFY2(run.status == 1, qPrintable(run.err));
        checkOutcomes(run.out, in, inputs, out);
        RunChecks::checkReport(out + u"/report.csv"_qs,
                               RunChecks::printedBy(run.out, u"source"_qs));
        checkAfterRun(sources, {in, out});
    }

    void sourcesRemovedOrReplacedAfterImport()
    {
        const QString in = path(u"replaced/in"_qs);
        const QString out = path(u"replaced/out"_qs);
        for (const char *name : {"removed.wav", "now a pipe.wav", "now quieter.wav"})
            QVERIFY(take(in + u'/' + QLatin1StringView(name), 1.5));
        auto vm = controller(out);
        vm->importPaths({in});
        settle(*vm);
        QVERIFY(!vm->hasUnanalyzedFiles());

        QVERIFY(QFile::remove(in + u"/removed.wav"_qs) &&
                QFile::remove(in + u"/now a pipe.wav"_qs));
        QCOMPARE(::mkfifo(encodedPath(in + u"/now a pipe.wav"_qs), 0644), 0);
        QVERIFY(RunChecks::writeAudio(in + u"/now quieter.wav"_qs, {Segment::noise(-36, 2)}));
        const auto sources = RunChecks::snapshot(in);
        vm->process();
        QTRY_COMPARE_WITH_TIMEOUT(vm->screenState(), AppScreenState::Completed, 60000);
        settle(*vm);
        QMap<QString, const AudioFileItem *> items;
        for (const AudioFileItem &item : vm->queue())
            items.insert(item.relativePath, &item);
        QCOMPARE(items.value(u"removed.wav"_qs)->status,
                 ProcessingStatus::failed(L::text(L::SourceMissingMessage, u"removed.wav"_qs)));
        const AudioFileItem *pipe = items.value(u"now a pipe.wav"_qs);
        QCOMPARE(pipe->status.kind(), ProcessingStatus::Kind::Failed);
        QVERIFY(failureMessages(pipe->relativePath).contains(pipe->status.message()));
        QVERIFY(pipe->errorDetails && !pipe->errorDetails->isEmpty());
        // Rewritten 18 dB lower after it was measured: written with the new loudness.
        const AudioFileItem *quieter = items.value(u"now quieter.wav"_qs);
        QCOMPARE(quieter->status.kind(), ProcessingStatus::Kind::Done);
        QVERIFY(quieter->result && quieter->result->originalLUFS.value_or(0) < -27);
        checkAfterRun(sources, {in, out});
    }

    // Stopped, cleared or quit at a random moment, seeded so that a failing
    // iteration can be run again as it was.
    void interruptedInTheWindow_data()
    {
        QTest::addColumn<QString>("act");
        QTest::addColumn<bool>("measured");   // the run starts once every file is measured
        QTest::addColumn<bool>("processing"); // a run is started at all
        QTest::addColumn<int>("maxDelayMs");
        QTest::newRow("clear while measuring") << u"clear"_qs << false << false << 400;
        QTest::newRow("clear and import again") << u"reimport"_qs << false << false << 300;
        QTest::newRow("cancel while writing") << u"cancel"_qs << true << true << 1500;
        QTest::newRow("cancel while measuring and writing")
            << u"cancel"_qs << false << true << 1500;
        QTest::newRow("quit while measuring") << u"quit"_qs << false << false << 800;
        QTest::newRow("quit while measuring and writing") << u"quit"_qs << false << true << 800;
    }

    void interruptedInTheWindow()
    {
        QFETCH(QString, act);
        QFETCH(bool, measured);
        QFETCH(bool, processing);
        QFETCH(int, maxDelayMs);
        const QString in = takes(u"timing/in"_qs, 6, 1.1, 0.6);
        const auto sources = RunChecks::snapshot(in);
        for (int i = 0; i < (stress() ? 100 : 2); ++i) {
            const int delayMs = QRandomGenerator(1000 + i).bounded(maxDelayMs);
            const QString out =
                path(u"timing/%1 %2"_qs.arg(QLatin1StringView(QTest::currentDataTag())).arg(i));
            auto vm = controller(out);
            vm->importPaths({in});
            if (measured)
                settle(*vm);
            if (processing)
                vm->process();
            QTest::qWait(delayMs);
            if (act == u"quit") {
                QElapsedTimer quitting;
                quitting.start();
                vm.reset();
                QVERIFY2(quitting.elapsed() < 5000,
                         qPrintable(QString::number(quitting.elapsed())));
                QCOMPARE(TestEnvironment::childProcessIds().size(), 0);
            } else if (act == u"cancel") {
                vm->cancelProcessing();
            } else {
                vm->clearQueue();
                if (act == u"reimport")
                    vm->importPaths({in});
            }
            if (vm) {
                settle(*vm);
                checkGoodItems(*vm, out);
            }
            if (act == u"reimport") {
                // One item per file, each measured once, and the counters back at rest.
                QCOMPARE(vm->queue().size(), 6);
                QVERIFY(!vm->hasUnanalyzedFiles());
                QCOMPARE(vm->analysisTotal(), 0);
            }
            checkAfterRun(sources, {in, out});
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(u"iteration %1, %2 ms"_qs.arg(i).arg(delayMs)));
        }
    }

    // However a run is disturbed from outside, it ends with the status a shell
    // expects, says each file once with its final status and leaves no hidden
    // file and no ffmpeg; one killed outright leaves hidden files that the
    // next run into that folder removes. What another run or the user's own
    // hand puts at an output's name is never replaced.
    void disturbed_data()
    {
        QTest::addColumn<int>("signal"); // sent to the run; 0: something else happens
        QTest::addColumn<bool>("whileMeasuring");
        QTest::addColumn<int>("status"); // -1: none, killed
        QTest::newRow("Ctrl-C while measuring") << SIGINT << true << 130;
        QTest::newRow("Ctrl-C while writing") << SIGINT << false << 130;
        QTest::newRow("kill while writing") << SIGTERM << false << 143;
        QTest::newRow("terminal closed while writing") << SIGHUP << false << 129;
        QTest::newRow("reader gone while writing") << SIGPIPE << false << 141;
        QTest::newRow("killed outright while writing") << SIGKILL << false << -1;
        QTest::newRow("a second run into the same folder") << 0 << true << 0;
        QTest::newRow("output folder removed mid-run") << 0 << false << 1;
        QTest::newRow("ffmpeg killed mid-run") << 0 << false << 1;
    }

    void disturbed()
    {
        QFETCH(int, signal);
        QFETCH(bool, whileMeasuring);
        QFETCH(int, status);
        const QString tag = QString::fromLatin1(QTest::currentDataTag());
        const QString in = takes(u"long/in"_qs, 4, 20, 0);
        const QString out = path(u"disturbed/"_qs + tag);
        const auto sources = RunChecks::snapshot(in);
        const QStringList arguments{u"--json"_qs, u"-o"_qs, out, in};
        // A part file seen may be finished a moment later: the output name of
        // the first whose writer is still there (and is sent the signal).
        const auto beingWritten = [&out](int toWriter) {
            QString name;
            return QTest::qWaitFor(
                       [&] {
                           for (const QString &part : RunChecks::partFilesBelow(out))
                               if (name.isEmpty() &&
                                   RunChecks::ffmpegProcessesMentioning(part, toWriter))
                                   name = PartFile::destinationName(fileNameOf(part));
                           return !name.isEmpty();
                       },
                       60000)
                       ? name
                       : QString();
        };
        auto cli = RunChecks::startCli(arguments);
        if (whileMeasuring)
            QTRY_VERIFY_WITH_TIMEOUT(RunChecks::ffmpegProcessesMentioning(in) > 0, 10000);
        else
            QVERIFY(!beingWritten(0).isEmpty());
        QList<Input> inputs;
        for (int i = 1; i <= 4; ++i)
            inputs.append({u"take %1.wav"_qs.arg(i), signal ? Expect::Stopped : Expect::Processed});
        std::unique_ptr<QProcess> second;
        if (signal) {
            QCOMPARE(::kill(static_cast<pid_t>(cli->processId()), signal), 0);
        } else if (tag.startsWith(u"a second run")) {
            second = RunChecks::startCli(arguments);
        } else if (tag.startsWith(u"output folder")) {
            // Pulled away while an ffmpeg still writes there, so that at least
            // its file fails, however fast the machine.
            QVERIFY(!beingWritten(0).isEmpty() && QDir(out).removeRecursively());
            for (Input &input : inputs)
                input.expect = Expect::Either;
        } else {
            const QString victim = beingWritten(SIGKILL);
            QVERIFY(!victim.isEmpty());
            for (Input &input : inputs)
                input.expect = input.name == victim ? Expect::Failed : Expect::Processed;
        }
        const RunChecks::CliRun run = RunChecks::finishCli(*cli, 240000);
        QCOMPARE(run.finished ? run.status : -1, status);
        if (signal == SIGKILL) {
            // Its children died with it; what it was writing stays until the next run.
            QTRY_COMPARE_WITH_TIMEOUT(RunChecks::ffmpegProcessesMentioning(out), 0, 3000);
            QVERIFY(!RunChecks::partFilesBelow(out).isEmpty());
            QCOMPARE(RunChecks::runCli({u"-o"_qs, out, in + u"/take 1.wav"_qs}).status, 0);
        } else {
            // Two runs number their outputs apart; a removed folder takes them along.
            checkOutcomes(run.out, in, inputs,
                          second || tag.startsWith(u"output") ? QString() : out);
        }
        if (signal && whileMeasuring)
            QCOMPARE(RunChecks::filesBelow(out), QStringList());
        if (second) {
            const RunChecks::CliRun other = RunChecks::finishCli(*second, 240000);
            QVERIFY2(other.finished && other.status == 0, qPrintable(other.err));
            checkOutcomes(other.out, in, inputs, QString());
            QSet<QString> printed;
            for (const auto &json : {run.out, other.out})
                for (const QJsonObject &entry : RunChecks::printedBy(json, u"source"_qs))
                    printed.insert(entry.value(u"output").toString());
            QSet<QString> written;
            for (const QString &file : RunChecks::filesBelow(out))
                written.insert(out + u'/' + file);
            QCOMPARE(printed, written);
            QCOMPARE(written.size(), 8);
        }
        checkAfterRun(sources, {in, out});
    }

    // A disk or an installation that fails every file: each says so, or the
    // run stops with one message before any file is blamed. A report that does
    // not fit on the full disk leaves the previous one whole.
    void faults_data()
    {
        QTest::addColumn<QString>("fault");
        for (const char *fault : {"read-only output folder", "ffmpeg missing",
                                  "ffmpeg not executable", "full file system"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }

    void faults()
    {
        QFETCH(QString, fault);
        const QString root = path(u"faults/"_qs + fault);
        const QString in = root + u"/in"_qs;
        const QString out = root + u"/out"_qs;
        const bool installation = fault.startsWith(u"ffmpeg");
        const bool full = fault.startsWith(u"full");
        QList<Input> inputs;
        for (const QString &name : {u"one.wav"_qs, u"two.wav"_qs, u"three.wav"_qs}) {
            QVERIFY(take(in + u'/' + name, 1));
            inputs.append({name, installation ? Expect::Untouched : Expect::Failed});
        }
        const auto sources = RunChecks::snapshot(in);
        QString program = RunChecks::cliPath();
        QStringList arguments{u"--json"_qs, u"-o"_qs, out, in};
        QDir().mkpath(out);
        if (!installation && !full) {
            QVERIFY(QFile::setPermissions(out, QFile::ReadOwner | QFile::ExeOwner |
                                                   QFile::ReadOther | QFile::ExeOther));
        } else if (installation) {
            // The front end laid out as installed, its ffmpeg gone or not runnable.
            const QString ffmpeg = root + u"/install/lib/tonbrook/ffmpeg"_qs;
            program = root + u"/install/bin/tonbrook-cli"_qs;
            QVERIFY(QDir().mkpath(root + u"/install/bin"_qs) &&
                    QDir().mkpath(QFileInfo(ffmpeg).path()) &&
                    QFile::copy(RunChecks::cliPath(), program));
            if (fault.endsWith(u"executable"))
                QVERIFY(QFile::copy(TestEnvironment::ffmpegPath(), ffmpeg) &&
                        QFile::setPermissions(ffmpeg, QFile::ReadOwner | QFile::WriteOwner));
        } else if (::mount("tonbrook-test", encodedPath(out), "tmpfs", 0, "size=256k") == 0) {
            arguments << u"--report"_qs << out + u"/report.csv"_qs;
            QVERIFY(RunChecks::write(arguments.last(), "the previous report\r\n"));
            QFile filler(out + u"/filler"_qs);
            QVERIFY(filler.open(QIODevice::WriteOnly));
            while (filler.write(QByteArray(4096, 'x')) == 4096 && filler.flush()) {
            }
        } else {
            QSKIP("cannot mount a small file system here; run as root outside a restricted "
                  "container");
        }
        const RunChecks::CliRun run =
            RunChecks::runCli(arguments, 240000, program, !installation && !full);
        if (full) {
            const QByteArray kept = RunChecks::contents(arguments.last());
            ::umount(encodedPath(out));
            QCOMPARE(kept, QByteArray("the previous report\r\n"));
            QVERIFY2(run.err.contains(systemErrorText(ENOSPC)), qPrintable(run.err));
            for (const QJsonObject &entry : RunChecks::printedBy(run.out, u"source"_qs))
                QCOMPARE(entry.value(u"message").toString(),
                         L::text(L::DiskFullMessage, fileNameOf(entry[u"source"].toString())));
        }
        QVERIFY2(run.finished, qPrintable(u"crashed or hung: "_qs + run.err));
        QCOMPARE(run.status, installation ? 3 : 1);
        const QString problem =
            L::text(L::InstallationProblem,
                    systemErrorText(fault.endsWith(u"executable") ? EACCES : ENOENT));
        QCOMPARE(run.err.count(problem), installation ? 1 : 0);
        checkOutcomes(run.out, in, inputs, out);
        checkAfterRun(sources, {in, out});
    }
};

int main(int argc, char *argv[])
{
    // Under make stress a case may run for an hour; a hang still ends the run.
    if (stress())
        qputenv("QTEST_FUNCTION_TIMEOUT", "3600000");
    QCoreApplication app(argc, argv);
    ReliabilityTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ReliabilityTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whatever the files, the disk or the timing: sources stay byte for byte as
// they were, no hidden part file survives, no ffmpeg outlives its run and no
// child is left unreaped, every failure says in the interface's words what
// went wrong with which file (and keeps the details), and the other files go
// on to their proper end. A watchdog aborts a case that hangs.
//
// TONBROOK_STRESS=1 (make stress) adds the two-hour file and runs the timing
// cases hundreds of times with seeded random moments.
#include "RunChecks.h"
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "app/MainViewModel.h"
#include "app/QueueModel.h"
#include "engine/FFmpegRunner.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/PartFile.h"
#include "engine/SystemError.h"
#include "files/FileImportService.h"
#include "files/FolderScanner.h"
#include "files/NoFilePanels.h"
#include "files/OutputPathService.h"
#include "localization/L.h"
#include "model/LoudnessPreset.h"
#include "model/StandardPath.h"

#include <QElapsedTimer>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <sys/mount.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using Segment = TestAudio::Segment;
using namespace std::chrono_literals;

namespace {

bool stress()
{
    return qEnvironmentVariableIntValue("TONBROOK_STRESS") == 1;
}

// Ends the whole test run when a case outlives its bound: a hang is a failure.
class Watchdog
{
public:
    Watchdog(QString what, std::chrono::seconds bound)
        : m_thread([this, what = std::move(what), bound] {
            std::unique_lock lock(m_mutex);
            if (!m_done.wait_for(lock, bound, [this] { return m_finished; })) {
                std::fprintf(stderr, "watchdog: %s still running after %lld s\n", qPrintable(what),
                             static_cast<long long>(bound.count()));
                std::abort();
            }
        })
    {}
    ~Watchdog()
    {
        {
            std::lock_guard lock(m_mutex);
            m_finished = true;
        }
        m_done.notify_all();
        m_thread.join();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_done;
    bool m_finished = false;
    std::thread m_thread;
};

enum class Expect
{
    Processed,   // done or warning, with its output written
    Failed,      // failed, with a translated message and details
    Either,      // ffmpeg may read some of it or none; either end is honest
    NotImported, // never reaches the queue
    Untouched,   // still ready: the run stopped before it for a reason not its own
};

struct Input
{
    QString name;
    Expect expect;
};

// The messages a failure may carry, in the interface's words.
QStringList failureMessages(const QString &fileName)
{
    const QString shown = displayedPath(fileName);
    return {L::text(L::DamagedMessage, shown),          L::text(L::PermissionMessage, shown),
            L::text(L::DiskFullMessage, shown),         L::text(L::WriteFailedMessage, shown),
            L::text(L::ReadOnlyMessage, shown),         L::text(L::SourceMissingMessage, shown),
            L::text(L::SourceUnreadableMessage, shown), L::text(L::TookTooLongMessage, shown)};
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A short stereo take in the given container (by extension).
bool writeAudio(const QString &path, double seconds, int rate = 48000, int channels = 2,
                double level = -18)
{
    QDir().mkpath(QFileInfo(path).path());
    const QString wav =
        path.endsWith(QStringLiteral(".wav")) ? path : path + QStringLiteral(".tmp.wav");
    if (!TestAudio::writeWav(
            wav, rate, channels,
            {Segment::noise(level, seconds * 0.6), Segment::sine(level, seconds * 0.4, 330)}))
        return false;
    if (wav == path)
        return true;
    const QString problem = TestAudio::encode(TestEnvironment::ffmpegPath(), wav, path);
    QFile::remove(wav);
    return problem.isEmpty();
}

// The same, under a name that may hold bytes that are not UTF-8.
bool writeAudioAt(const QString &path, double seconds)
{
    const QString plain = path.left(path.lastIndexOf(u'/') + 1) + QStringLiteral("plain.wav");
    return writeAudio(plain, seconds) &&
           ::rename(encodedPath(plain).constData(), encodedPath(path).constData()) == 0;
}

bool existsAt(const QString &path)
{
    struct stat info
    {};
    return ::stat(encodedPath(path).constData(), &info) == 0 && info.st_size > 0;
}

void patchU32(QByteArray &bytes, int offset, quint32 value)
{
    for (int i = 0; i < 4; ++i)
        bytes[offset + i] = static_cast<char>((value >> (8 * i)) & 0xff);
}

// One group of hostile inputs written into the folder, with what each must come to.
QList<Input> hostileGroup(const QString &group, const QString &dir)
{
    const auto at = [&dir](const QString &name) -> QString { return dir + u'/' + name; };
    QDir().mkpath(dir);
    QList<Input> inputs;
    const auto add = [&inputs](const QString &name, Expect expect, bool written) {
        if (!written)
            QTest::qFail(qPrintable(QStringLiteral("could not write ") + name), __FILE__, __LINE__);
        inputs.append({name, expect});
    };

    if (group == u"garbage") {
        add(QStringLiteral("empty.wav"), Expect::Failed,
            writeBytes(at(QStringLiteral("empty.wav")), {}));
        add(QStringLiteral("notes.wav"), Expect::Failed,
            writeBytes(at(QStringLiteral("notes.wav")), "Scene 3: rain, then thunder.\n"));
        QImage picture(32, 32, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        add(QStringLiteral("cover.mp3"), Expect::Failed,
            picture.save(at(QStringLiteral("cover.mp3")), "PNG"));
        add(QStringLiteral("readme.m4a"), Expect::Failed,
            writeBytes(at(QStringLiteral("readme.m4a")), QByteArray(4096, 'x')));
        QByteArray noise(65536, Qt::Uninitialized);
        QRandomGenerator seeded(7);
        seeded.fillRange(reinterpret_cast<quint32 *>(noise.data()), noise.size() / 4);
        add(QStringLiteral("random.aiff"), Expect::Failed,
            writeBytes(at(QStringLiteral("random.aiff")), noise));
    } else if (group == u"truncated") {
        for (const QString &name :
             {QStringLiteral("cut.wav"), QStringLiteral("cut.mp3"), QStringLiteral("cut.m4a")}) {
            const QString whole = at(QStringLiteral("whole/") + name);
            bool written = writeAudio(whole, 3);
            const QByteArray bytes = readBytes(whole);
            written = written && writeBytes(at(name), bytes.left(bytes.size() / 2));
            QDir(at(QStringLiteral("whole"))).removeRecursively();
            // The index of an M4A sits at its end: cut, nothing can be read.
            add(name, name.endsWith(QStringLiteral(".m4a")) ? Expect::Failed : Expect::Processed,
                written);
        }
        const QString header = at(QStringLiteral("header only.wav"));
        add(QStringLiteral("header only.wav"), Expect::Either,
            writeAudio(header, 1) && writeBytes(header, readBytes(header).left(44)));
    } else if (group == u"lying headers") {
        const QString claim = at(QStringLiteral("claims 4 GB.wav"));
        bool written = writeAudio(claim, 2);
        QByteArray bytes = readBytes(claim);
        patchU32(bytes, 4, 0xfffffff0u);
        patchU32(bytes, 40, 0xffffffe0u);
        add(QStringLiteral("claims 4 GB.wav"), Expect::Processed,
            written && writeBytes(claim, bytes));
        const QString rate = at(QStringLiteral("absurd rate.wav"));
        written = writeAudio(rate, 1);
        bytes = readBytes(rate);
        patchU32(bytes, 24, 0xfffffff0u);
        add(QStringLiteral("absurd rate.wav"), Expect::Either, written && writeBytes(rate, bytes));
        // 100 KB that claim a day of audio at 1 Hz: stopped by its time limit.
        QByteArray oneHertz = readBytes(rate).left(44) + QByteArray(100 * 1024, '\0');
        patchU32(oneHertz, 4, static_cast<quint32>(oneHertz.size() - 8));
        patchU32(oneHertz, 20, 0x00010001u); // PCM, mono
        patchU32(oneHertz, 24, 1);
        patchU32(oneHertz, 28, 2);
        patchU32(oneHertz, 32, 0x00100002u); // 2-byte frames, 16 bits
        patchU32(oneHertz, 40, 100 * 1024);
        add(QStringLiteral("one hertz.wav"), Expect::Failed,
            writeBytes(at(QStringLiteral("one hertz.wav")), oneHertz));
    } else if (group == u"shapes") {
        add(QStringLiteral("eight channels.wav"), Expect::Processed,
            writeAudio(at(QStringLiteral("eight channels.wav")), 2, 48000, 8));
        add(QStringLiteral("mono.aiff"), Expect::Processed,
            writeAudio(at(QStringLiteral("mono.aiff")), 2, 44100, 1));
        add(QStringLiteral("telephone 8 kHz.wav"), Expect::Processed,
            writeAudio(at(QStringLiteral("telephone 8 kHz.wav")), 2, 8000, 1));
        add(QStringLiteral("hi-res 192 kHz.wav"), Expect::Processed,
            writeAudio(at(QStringLiteral("hi-res 192 kHz.wav")), 2, 192000));
        add(QStringLiteral("blip 10 ms.wav"), Expect::Processed,
            writeAudio(at(QStringLiteral("blip 10 ms.wav")), 0.01));
        add(QStringLiteral("silence.wav"), Expect::Processed,
            TestAudio::writeWav(at(QStringLiteral("silence.wav")), 48000, 2,
                                {Segment::silence(2)}));
        add(QStringLiteral("clipped square.wav"), Expect::Processed,
            TestAudio::writeWav(at(QStringLiteral("clipped square.wav")), 48000, 2,
                                {Segment::square(0, 2, 100)}));
    } else if (group == u"names") {
        const QStringList names = {
            QStringLiteral("say \"hello\" and 'bye'.wav"),
            QStringLiteral("back\\slash.wav"),
            QStringLiteral("two\nlines.wav"),
            QStringLiteral("-leading dash.wav"),
            QStringLiteral("100% loud & clear.wav"),
            QStringLiteral("headphones \U0001F3A7.wav"),
            QStringLiteral("Гроза над рекой.wav"),
            QString(251, u'n') + QStringLiteral(".wav"), // 255 bytes, the longest a name may be
        };
        for (const QString &name : names)
            add(name, Expect::Processed, writeAudio(at(name), 0.5));
        const QString latin1 = decodedPath("caf\xe9 \xff.wav"); // not UTF-8
        add(latin1, Expect::Processed, writeAudioAt(at(latin1), 0.5));
    } else if (group == u"links and special files") {
        add(QStringLiteral("real.wav"), Expect::Processed,
            writeAudio(at(QStringLiteral("real.wav")), 1));
        add(QStringLiteral("link to real.wav"), Expect::NotImported,
            QFile::link(at(QStringLiteral("real.wav")), at(QStringLiteral("link to real.wav"))));
        add(QStringLiteral("dangling.wav"), Expect::NotImported,
            QFile::link(at(QStringLiteral("gone.wav")), at(QStringLiteral("dangling.wav"))));
        add(QStringLiteral("loop/inner.wav"), Expect::Processed,
            writeAudio(at(QStringLiteral("loop/inner.wav")), 1));
        add(QStringLiteral("loop/again/inner.wav"), Expect::NotImported,
            QFile::link(dir, at(QStringLiteral("loop/again"))));
        add(QStringLiteral("pipe.wav"), Expect::NotImported,
            ::mkfifo(QFile::encodeName(at(QStringLiteral("pipe.wav"))).constData(), 0644) == 0);
    } else if (group == u"unreadable") {
        add(QStringLiteral("open.wav"), Expect::Processed,
            writeAudio(at(QStringLiteral("open.wav")), 1));
        add(QStringLiteral("locked.wav"), Expect::Failed,
            writeAudio(at(QStringLiteral("locked.wav")), 1) &&
                QFile::setPermissions(at(QStringLiteral("locked.wav")), {}));
        add(QStringLiteral("locked folder/inside.wav"), Expect::NotImported,
            writeAudio(at(QStringLiteral("locked folder/inside.wav")), 1) &&
                QFile::setPermissions(at(QStringLiteral("locked folder")), {}));
    } else if (group == u"two hours") {
        add(QStringLiteral("two hours.wav"), Expect::Processed,
            TestAudio::writeWav(at(QStringLiteral("two hours.wav")), 8000, 1,
                                {Segment::noise(-30, 3600), Segment::sine(-20, 3600, 200)}));
    }
    return inputs;
}

// The controller on the real services and the bundled ffmpeg.
AppServices realServices(const QString &preferencesFile)
{
    const QString ffmpeg = TestEnvironment::ffmpegPath();
    return {.bookmarkStore = OutputFolderBookmarkStore(
                std::make_shared<QSettings>(preferencesFile, QSettings::IniFormat)),
            .analysisService =
                std::make_shared<LoudnessAnalysisService>(std::make_shared<FFmpegRunner>(ffmpeg)),
            .processingService = std::make_shared<LoudnessProcessingService>(
                std::make_shared<FFmpegRunner>(ffmpeg),
                std::make_shared<LoudnessAnalysisService>(std::make_shared<FFmpegRunner>(ffmpeg)))};
}

ProcessingSettings podcastInto(const QString &output)
{
    ProcessingSettings settings;
    settings.selectedPreset = *LoudnessPreset::builtIn(u"podcast");
    settings.outputFolder = output;
    settings.revealInFinderWhenComplete = false;
    return settings;
}

// The front end's --json lines by source path.
QMap<QString, QJsonObject> reportedBySource(const QByteArray &json)
{
    QMap<QString, QJsonObject> reported;
    for (const QByteArray &line : json.split('\n')) {
        if (line.trimmed().isEmpty())
            continue;
        const QJsonObject entry = QJsonDocument::fromJson(line).object();
        reported.insert(entry.value(QStringLiteral("source")).toString(), entry);
    }
    return reported;
}

// Stops, as an outsider would, the ffmpeg that writes the given hidden file.
bool killFFmpegWriting(const QString &partName)
{
    const QString ffmpeg = QFileInfo(TestEnvironment::ffmpegPath()).canonicalFilePath();
    const QStringList pids = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &pid : pids) {
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
        if (QFileInfo(QStringLiteral("/proc/%1/exe").arg(pid)).canonicalFilePath() == ffmpeg &&
            cmdline.open(QIODevice::ReadOnly) && cmdline.readAll().contains(partName.toUtf8()))
            return ::kill(pid.toInt(), SIGKILL) == 0;
    }
    return false;
}

} // namespace

class ReliabilityTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString path(const QString &relative) const { return m_dir.filePath(relative); }

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
        QTRY_COMPARE_WITH_TIMEOUT(RunChecks::zombieChildren(), 0, 5000);
    }

    // Every file of a front-end run came to its proper end.
    // outputsKept is false where the case itself deletes what was written.
    void checkOutcomes(const QByteArray &json, const QString &inputDir, const QList<Input> &inputs,
                       bool outputsKept = true)
    {
        const QMap<QString, QJsonObject> reported = reportedBySource(json);
        for (const Input &input : inputs) {
            const QString source = inputDir + u'/' + input.name;
            const QString name = fileNameOf(input.name);
            const QString printable =
                displayedPath(input.name).replace(u'\n', QStringLiteral("\\n"));
            if (input.expect == Expect::NotImported) {
                QVERIFY2(!reported.contains(source),
                         qPrintable(printable + QStringLiteral(" was imported")));
                continue;
            }
            QVERIFY2(reported.contains(source),
                     qPrintable(printable + QStringLiteral(" is missing")));
            const QJsonObject entry = reported.value(source);
            const QString status = entry.value(QStringLiteral("status")).toString();
            const bool processed = status == u"done" || status == u"warning";
            const QString why = printable + u' ' + status + u' ' +
                                entry.value(QStringLiteral("message")).toString() + u' ' +
                                entry.value(QStringLiteral("errorDetails")).toString().left(300);
            if (input.expect == Expect::Processed)
                QVERIFY2(processed, qPrintable(why));
            if (input.expect == Expect::Failed)
                QVERIFY2(status == u"failed", qPrintable(why));
            if (input.expect == Expect::Untouched) {
                QVERIFY2(status == u"ready", qPrintable(why));
                continue;
            }
            QVERIFY2(processed || status == u"failed", qPrintable(why));
            if (processed && outputsKept) {
                QVERIFY2(existsAt(entry.value(QStringLiteral("output")).toString()),
                         qPrintable(why));
            } else if (!processed) {
                QVERIFY2(failureMessages(name).contains(
                             entry.value(QStringLiteral("message")).toString()),
                         qPrintable(why));
                QVERIFY2(!entry.value(QStringLiteral("errorDetails")).toString().isEmpty(),
                         qPrintable(why));
            }
        }
    }

    // The controller on the bundled ffmpeg, writing into the given folder.
    std::unique_ptr<MainViewModel> controller(const QString &output)
    {
        auto vm =
            std::make_unique<MainViewModel>(realServices(path(QStringLiteral("preferences.ini"))));
        vm->setSettings(podcastInto(output));
        return vm;
    }

    // Good takes of 1 to 4 s for the timing cases, written once.
    QString timingInputs()
    {
        const QString in = path(QStringLiteral("timing/in"));
        if (!QFileInfo::exists(in))
            for (int i = 1; i <= 6; ++i)
                writeAudio(QStringLiteral("%1/take %2.wav").arg(in).arg(i), 0.5 + 0.6 * i);
        return in;
    }

    static const AudioFileItem *itemNamed(const MainViewModel &vm, const QString &relativePath)
    {
        for (const AudioFileItem &item : vm.queue())
            if (item.relativePath == relativePath)
                return &item;
        return nullptr;
    }

    // Takes long enough (20 s each) that a run can be caught at any stage.
    QString longInputs()
    {
        const QString in = path(QStringLiteral("long/in"));
        if (!QFileInfo::exists(in))
            for (int i = 1; i <= 4; ++i)
                writeAudio(QStringLiteral("%1/take %2.wav").arg(in).arg(i), 20);
        return in;
    }

    // The command line started, not waited for, with a temporary folder of its own.
    std::unique_ptr<QProcess> startCli(const QStringList &arguments, const QString &temporary = {})
    {
        auto process = std::make_unique<QProcess>();
        if (!temporary.isEmpty()) {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(QStringLiteral("TMPDIR"), temporary);
            process->setProcessEnvironment(environment);
        }
        process->start(RunChecks::cliPath(), arguments);
        process->waitForStarted();
        return process;
    }

    // The first hidden file that appears below the folder.
    static QString firstPartFile(const QString &root)
    {
        QString part;
        QElapsedTimer waiting;
        waiting.start();
        while (part.isEmpty() && waiting.elapsed() < 60000) {
            const QStringList parts = RunChecks::partFilesBelow(root);
            if (!parts.isEmpty())
                part = parts.first();
            else
                QTest::qWait(5);
        }
        return part;
    }

    // No job still running: every ffmpeg gone and every item settled.
    static void settle(const MainViewModel &vm)
    {
        const auto busy = [&vm] {
            for (const AudioFileItem &item : vm.queue())
                if (item.status.kind() == ProcessingStatus::Kind::Analyzing ||
                    item.status.kind() == ProcessingStatus::Kind::Processing)
                    return true;
            return false;
        };
        QTRY_VERIFY_WITH_TIMEOUT(
            !vm.isAnalyzing() && !busy() && TestEnvironment::childProcessIds().isEmpty(), 20000);
    }

    // Items of good inputs after any run: never failed; what was written is
    // there, complete; nothing else was written.
    static void checkGoodItems(const MainViewModel &vm, const QString &output,
                               const QString &context)
    {
        QStringList expected;
        for (const AudioFileItem &item : vm.queue()) {
            const QString why = context + u' ' + item.relativePath + u' ' +
                                ProcessingStatus::rawValue(item.status.kind()) + u' ' +
                                item.status.message();
            const auto kind = item.status.kind();
            QVERIFY2(kind != ProcessingStatus::Kind::Failed, qPrintable(why));
            if (kind == ProcessingStatus::Kind::Done || kind == ProcessingStatus::Kind::Warning) {
                QVERIFY2(item.result, qPrintable(why));
                expected.append(item.result->outputFileName);
            }
        }
        expected.sort();
        QCOMPARE(RunChecks::filesBelow(output), expected);
    }

private Q_SLOTS:
    void initTestCase()
    {
        // Open to the unprivileged runs below.
        QVERIFY(QFile::setPermissions(
            m_dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                              QFileDevice::ReadOther | QFileDevice::ExeOther));
    }

    void hostileInputs_data()
    {
        QTest::addColumn<QString>("group");
        for (const char *group : {"garbage", "truncated", "lying headers", "shapes", "names",
                                  "links and special files", "unreadable"})
            QTest::newRow(group) << QString::fromLatin1(group);
        if (stress())
            QTest::newRow("two hours") << QStringLiteral("two hours");
    }

    void hostileInputs()
    {
        QFETCH(QString, group);
        const QString in = path(QStringLiteral("hostile/") + group);
        const QString out = path(QStringLiteral("hostile-out/") + group);
        const QList<Input> inputs = hostileGroup(group, in);
        const auto sources = RunChecks::snapshot(in);
        // Permission bits mean nothing to root: that group runs as nobody.
        const bool unprivileged = group == u"unreadable";
        QDir().mkpath(out);
        QFile::setPermissions(out, QFileDevice::ReadOther | QFileDevice::WriteOther |
                                       QFileDevice::ExeOther | QFileDevice::ReadOwner |
                                       QFileDevice::WriteOwner | QFileDevice::ExeOwner);

        Watchdog watchdog(group, stress() ? 1800s : 180s);
        const RunChecks::CliRun run =
            RunChecks::runCli({QStringLiteral("--json"), QStringLiteral("--preset"),
                               QStringLiteral("podcast"), QStringLiteral("-o"), out, in},
                              stress() ? 1700000 : 170000, RunChecks::cliPath(), unprivileged);
        QVERIFY2(run.finished, qPrintable(QStringLiteral("crashed or hung: ") + run.err));
        QVERIFY2(run.status == 0 || run.status == 1, qPrintable(run.err));
        checkOutcomes(run.out, in, inputs);
        checkAfterRun(sources, {in, out});
        if (unprivileged)
            QFile::setPermissions(in + QStringLiteral("/locked folder"),
                                  QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                      QFileDevice::ExeOwner);
    }

    void sourcesRemovedOrReplacedAfterImport()
    {
        const QString in = path(QStringLiteral("replaced/in"));
        const QString out = path(QStringLiteral("replaced/out"));
        for (const char *name : {"removed.wav", "now a pipe.wav", "now longer.wav", "kept.wav"})
            QVERIFY(writeAudio(in + u'/' + QLatin1StringView(name), 1.5));
        Watchdog watchdog(QStringLiteral("replaced sources"), 120s);
        auto vm = controller(out);
        vm->importPaths({in});
        settle(*vm);
        QVERIFY(!vm->hasUnanalyzedFiles());

        QVERIFY(QFile::remove(in + QStringLiteral("/removed.wav")));
        QVERIFY(QFile::remove(in + QStringLiteral("/now a pipe.wav")));
        QCOMPARE(
            ::mkfifo(QFile::encodeName(in + QStringLiteral("/now a pipe.wav")).constData(), 0644),
            0);
        QVERIFY(writeAudio(in + QStringLiteral("/now longer.wav"), 4, 44100, 1, -30));
        const auto sources = RunChecks::snapshot(in);

        vm->process();
        QTRY_COMPARE_WITH_TIMEOUT(vm->screenState(), AppScreenState::Completed, 60000);
        settle(*vm);
        QMap<QString, ProcessingStatus::Kind> statuses;
        for (const AudioFileItem &item : vm->queue()) {
            statuses.insert(item.relativePath, item.status.kind());
            if (item.status.kind() == ProcessingStatus::Kind::Failed) {
                QVERIFY(failureMessages(item.relativePath).contains(item.status.message()));
                QVERIFY(item.errorDetails && !item.errorDetails->isEmpty());
            }
        }
        QCOMPARE(statuses.value(QStringLiteral("removed.wav")), ProcessingStatus::Kind::Failed);
        QCOMPARE(itemNamed(*vm, QStringLiteral("removed.wav"))->status.message(),
                 L::text(L::SourceMissingMessage, QStringLiteral("removed.wav")));
        // Rewritten at another level after it was measured: written with the new loudness.
        const LoudnessMeasurement now =
            LoudnessAnalysisService(std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath()))
                .analyze(in + QStringLiteral("/now longer.wav"), -16, -1, CancellationToken());
        const auto &longer = itemNamed(*vm, QStringLiteral("now longer.wav"))->result;
        QVERIFY(longer && longer->originalLUFS);
        QVERIFY2(std::abs(*longer->originalLUFS - now.inputI) < 0.01,
                 qPrintable(QString::number(*longer->originalLUFS)));
        QCOMPARE(statuses.value(QStringLiteral("now a pipe.wav")), ProcessingStatus::Kind::Failed);
        QCOMPARE(statuses.value(QStringLiteral("now longer.wav")), ProcessingStatus::Kind::Done);
        QCOMPARE(statuses.value(QStringLiteral("kept.wav")), ProcessingStatus::Kind::Done);
        checkAfterRun(sources, {in, out});
    }

    void cancellationAtRandomMoments()
    {
        const QString in = timingInputs();
        const auto sources = RunChecks::snapshot(in);
        const int iterations = stress() ? 300 : 6;
        for (int i = 0; i < iterations; ++i) {
            // Seeded, so a failing iteration can be run again as it was.
            QRandomGenerator random(1000 + i);
            const int moment = static_cast<int>(random.bounded(3));
            const int delayMs = static_cast<int>(random.bounded(moment == 0 ? 400 : 1500));
            const QString out = path(QStringLiteral("timing/cancel-%1").arg(i));
            const QString context =
                QStringLiteral("iteration %1 (moment %2, %3 ms)").arg(i).arg(moment).arg(delayMs);
            Watchdog watchdog(context, 120s);
            auto vm = controller(out);
            vm->importPaths({in});
            if (moment == 0) { // while measuring
                QTest::qWait(delayMs);
                vm->clearQueue();
            } else {
                if (moment == 1) // after measuring; else while still measuring
                    settle(*vm);
                vm->process();
                QTest::qWait(delayMs);
                vm->cancelProcessing();
            }
            settle(*vm);
            checkGoodItems(*vm, out, context);
            checkAfterRun(sources, {in, out});
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(context));
        }
    }

    void clearAndImportAgainWhileMeasuring()
    {
        const QString in = timingInputs();
        const int iterations = stress() ? 50 : 3;
        for (int i = 0; i < iterations; ++i) {
            QRandomGenerator random(2000 + i);
            const int delayMs = static_cast<int>(random.bounded(300));
            Watchdog watchdog(QStringLiteral("clear and import, iteration %1").arg(i), 120s);
            auto vm = controller(path(QStringLiteral("timing/unused")));
            vm->importPaths({in});
            QTest::qWait(delayMs);
            vm->clearQueue();
            vm->importPaths({in});
            settle(*vm);
            // One item per file, each measured once, and the counters back at rest.
            QCOMPARE(vm->queue().size(), 6);
            QVERIFY2(!vm->hasUnanalyzedFiles(), qPrintable(QString::number(i)));
            QCOMPARE(vm->analysisTotal(), 0);
        }
    }

    void quittingWhileJobsRun()
    {
        const QString in = timingInputs();
        const auto sources = RunChecks::snapshot(in);
        const int iterations = stress() ? 30 : 3;
        for (int i = 0; i < iterations; ++i) {
            QRandomGenerator random(3000 + i);
            const int delayMs = static_cast<int>(random.bounded(800));
            const QString out = path(QStringLiteral("timing/quit-%1").arg(i));
            Watchdog watchdog(QStringLiteral("quit, iteration %1").arg(i), 60s);
            auto vm = controller(out);
            vm->importPaths({in});
            if (i % 2 == 1)
                vm->process(); // quit while measuring and writing at once
            else
                QTest::qWait(delayMs);
            QElapsedTimer quitting;
            quitting.start();
            vm.reset();
            QVERIFY2(quitting.elapsed() < 5000, qPrintable(QString::number(quitting.elapsed())));
            QCOMPARE(TestEnvironment::childProcessIds().size(), 0);
            checkAfterRun(sources, {in, out});
        }
    }

    // However a run is stopped, it ends with the status a shell expects, says
    // each file once with its final status, writes nothing more and leaves no
    // hidden file and no ffmpeg; one killed outright leaves hidden files that
    // the next run into that folder removes.
    void stopping_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("whileMeasuring");
        QTest::addColumn<int>("status"); // -1: no status, killed
        QTest::newRow("Ctrl-C while measuring") << SIGINT << true << 130;
        QTest::newRow("Ctrl-C while writing") << SIGINT << false << 130;
        QTest::newRow("kill while writing") << SIGTERM << false << 143;
        QTest::newRow("terminal closed while writing") << SIGHUP << false << 129;
        QTest::newRow("reader gone while writing") << SIGPIPE << false << 141;
        QTest::newRow("killed outright while writing") << SIGKILL << false << -1;
    }

    void stopping()
    {
        QFETCH(int, signal);
        QFETCH(bool, whileMeasuring);
        QFETCH(int, status);
        const QString in = longInputs();
        const QString out =
            path(QStringLiteral("stopping/") + QLatin1StringView(QTest::currentDataTag()));
        const auto sources = RunChecks::snapshot(in);
        Watchdog watchdog(QLatin1StringView(QTest::currentDataTag()), 120s);
        auto cli = startCli({QStringLiteral("--json"), QStringLiteral("-o"), out, in});
        if (whileMeasuring)
            QTRY_VERIFY_WITH_TIMEOUT(RunChecks::ffmpegProcessesMentioning(in) > 0, 10000);
        else
            QVERIFY(!firstPartFile(out).isEmpty());
        QCOMPARE(::kill(static_cast<pid_t>(cli->processId()), signal), 0);
        QVERIFY(cli->waitForFinished(30000));

        if (status < 0) {
            QCOMPARE(cli->exitStatus(), QProcess::CrashExit);
            // Its children died with it; what it was writing stays until the next run.
            QTRY_COMPARE_WITH_TIMEOUT(RunChecks::ffmpegProcessesMentioning(out), 0, 3000);
            QVERIFY(!RunChecks::partFilesBelow(out).isEmpty());
            const RunChecks::CliRun next =
                RunChecks::runCli({QStringLiteral("-o"), out, in + QStringLiteral("/take 1.wav")});
            QCOMPARE(next.status, 0);
        } else {
            QCOMPARE(cli->exitStatus(), QProcess::NormalExit);
            QCOMPARE(cli->exitCode(), status);
            const QByteArray json = cli->readAllStandardOutput();
            const QList<QByteArray> lines = json.trimmed().split('\n');
            QCOMPARE(lines.size(), 4);
            QCOMPARE(reportedBySource(json).size(), 4);
            for (const QJsonObject &entry : reportedBySource(json)) {
                const QString state = entry.value(QStringLiteral("status")).toString();
                QVERIFY2(state != u"processing" && state != u"analyzing", qPrintable(state));
            }
            if (whileMeasuring)
                QCOMPARE(RunChecks::filesBelow(out), QStringList());
        }
        checkAfterRun(sources, {in, out});
    }

    // Nothing that appears at an output's name while a run writes is ever
    // replaced: another run's outputs, or a file the user saved.
    void namesTakenDuringARun_data()
    {
        QTest::addColumn<bool>("twoRuns");
        QTest::newRow("two runs into one folder at once") << true;
        QTest::newRow("a file saved at an output's name mid-run") << false;
    }

    void namesTakenDuringARun()
    {
        QFETCH(bool, twoRuns);
        const QString in = twoRuns ? timingInputs() : longInputs();
        const QString out =
            path(QStringLiteral("taken/") + QLatin1StringView(QTest::currentDataTag()));
        const auto sources = RunChecks::snapshot(in);
        Watchdog watchdog(QLatin1StringView(QTest::currentDataTag()), 180s);
        std::vector<std::unique_ptr<QProcess>> runs;
        runs.push_back(startCli({QStringLiteral("--json"), QStringLiteral("-o"), out, in}));
        QString userFile;
        if (twoRuns) {
            runs.push_back(startCli({QStringLiteral("--json"), QStringLiteral("-o"), out, in}));
        } else {
            // Saved with O_EXCL: a name whose output is already in place is not the case.
            while (userFile.isEmpty()) {
                const QString part = firstPartFile(out);
                QVERIFY(!part.isEmpty());
                const QString name = out + u'/' + PartFile::destinationName(fileNameOf(part));
                const int fd = ::open(encodedPath(name).constData(),
                                      O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
                if (fd >= 0 && ::write(fd, "mine", 4) == 4)
                    userFile = name;
                if (fd >= 0)
                    ::close(fd);
            }
        }
        QSet<QString> outputs;
        int reported = 0;
        for (const auto &run : runs) {
            QVERIFY(run->waitForFinished(150000));
            QCOMPARE(run->exitCode(), 0);
            for (const QJsonObject &entry : reportedBySource(run->readAllStandardOutput())) {
                ++reported;
                QCOMPARE(entry.value(QStringLiteral("status")).toString(), QStringLiteral("done"));
                outputs.insert(entry.value(QStringLiteral("output")).toString());
            }
        }
        QCOMPARE(outputs.size(), reported);
        if (!twoRuns) {
            QVERIFY(!outputs.contains(userFile));
            QCOMPARE(readBytes(userFile), QByteArray("mine"));
        }
        QCOMPARE(RunChecks::filesBelow(out).size(), reported + (twoRuns ? 0 : 1));
        for (const QString &output : std::as_const(outputs))
            QVERIFY2(existsAt(output), qPrintable(output));
        checkAfterRun(sources, {in, out});
    }

    // A report is written whole or not at all, and never over audio.
    void reports_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("status");
        QTest::newRow("on a full disk") << QStringLiteral("full/report.csv") << 1;
        QTest::newRow("over a queued source") << QStringLiteral("in/take 1.wav") << 2;
        QTest::newRow("named like audio") << QStringLiteral("report.wav") << 2;
    }

    void reports()
    {
        QFETCH(QString, target);
        QFETCH(int, status);
        const QString root =
            path(QStringLiteral("reports/") + QLatin1StringView(QTest::currentDataTag()));
        const QString in = root + QStringLiteral("/in");
        QVERIFY(writeAudio(in + QStringLiteral("/take 1.wav"), 1));
        const QString report = root + u'/' + target;
        const bool full = target.startsWith(QStringLiteral("full/"));
        if (full) {
            QDir().mkpath(root + QStringLiteral("/full"));
            if (::mount("tonbrook-test", encodedPath(root + QStringLiteral("/full")).constData(),
                        "tmpfs", 0, "size=64k") != 0)
                QSKIP(qPrintable(QStringLiteral("cannot mount a small file system here (") +
                                 QString::fromLocal8Bit(std::strerror(errno)) + u')'));
            QVERIFY(writeBytes(report, "the previous report\r\n"));
            QByteArray block(4096, 'x');
            QFile filler(root + QStringLiteral("/full/filler"));
            QVERIFY(filler.open(QIODevice::WriteOnly));
            while (filler.write(block) == block.size() && filler.flush()) {
            }
        }
        const auto before = RunChecks::snapshot(root);
        const RunChecks::CliRun run =
            RunChecks::runCli({QStringLiteral("-o"), root + QStringLiteral("/out"),
                               QStringLiteral("--report"), report, in});
        const QByteArray kept = readBytes(report);
        if (full)
            ::umount(encodedPath(root + QStringLiteral("/full")).constData());
        QCOMPARE(run.status, status);
        QVERIFY2(run.err.contains(full ? systemErrorText(ENOSPC)
                                       : L::text(L::ReportOverAudioRefused, report)),
                 qPrintable(run.err));
        if (full)
            QCOMPARE(kept, QByteArray("the previous report\r\n"));
        else
            QVERIFY(RunChecks::changedSince(before).isEmpty());
    }

    // What the command line says and leaves: a named path that is not there
    // makes the run fail, an output folder among the sources is warned about,
    // a prefix of dots hides nothing, and no command leaves a temporary folder.
    void commandLineHonesty_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("said");
        const QString in = QStringLiteral("IN");
        const QString out = QStringLiteral("OUT");
        QTest::newRow("help") << QStringList{QStringLiteral("--help")} << 0 << QString();
        QTest::newRow("version") << QStringList{QStringLiteral("--version")} << 0 << QString();
        QTest::newRow("a path that is not there")
            << QStringList{QStringLiteral("-o"), out, in, QStringLiteral("IN/nothing.wav")} << 1
            << L::text(L::CliNoSuchPath, QStringLiteral("IN/nothing.wav"));
        QTest::newRow("output among the sources")
            << QStringList{QStringLiteral("-o"), QStringLiteral("IN/normalized"), in} << 0
            << L::text(L::WarnInsideSource);
        QTest::newRow("a prefix of dots")
            << QStringList{QStringLiteral("--prefix"), QStringLiteral(".."), QStringLiteral("-o"),
                           out, in}
            << 0 << QString();
    }

    void commandLineHonesty()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, said);
        const QString root =
            path(QStringLiteral("honesty/") + QLatin1StringView(QTest::currentDataTag()));
        const QString in = root + QStringLiteral("/in");
        const QString temporary = root + QStringLiteral("/tmp");
        QVERIFY(writeAudio(in + QStringLiteral("/take.wav"), 1) && QDir().mkpath(temporary));
        for (QString &argument : arguments)
            argument.replace(QStringLiteral("IN"), in)
                .replace(QStringLiteral("OUT"), root + QStringLiteral("/out"));
        said.replace(QStringLiteral("IN"), in);
        auto cli = startCli(arguments, temporary);
        QVERIFY(cli->waitForFinished(60000));
        QCOMPARE(cli->exitCode(), status);
        QVERIFY2(QString::fromUtf8(cli->readAllStandardError()).contains(said), qPrintable(said));
        QCOMPARE(RunChecks::filesBelow(temporary), QStringList());
        QCOMPARE(QDir(temporary).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        for (const QString &written : RunChecks::filesBelow(root + QStringLiteral("/out")))
            QVERIFY2(!fileNameOf(written).startsWith(u'.'), qPrintable(written));
    }

    void faults_data()
    {
        QTest::addColumn<QString>("fault");
        for (const char *fault :
             {"read-only output folder", "ffmpeg missing", "ffmpeg not executable",
              "output folder removed mid-run", "ffmpeg killed mid-run", "full file system"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }

    void faults()
    {
        QFETCH(QString, fault);
        const QString in = path(QStringLiteral("faults/") + fault + QStringLiteral("/in"));
        const QString out = path(QStringLiteral("faults/") + fault + QStringLiteral("/out"));
        const bool longer =
            fault.contains(QStringLiteral("mid-run")) || fault.contains(QStringLiteral("full"));
        QList<Input> inputs;
        for (const QString &name :
             {QStringLiteral("one.wav"), QStringLiteral("two.wav"), QStringLiteral("three.wav")}) {
            QVERIFY(writeAudio(in + u'/' + name, longer ? 30 : 1));
            inputs.append({name, Expect::Failed});
        }
        const auto sources = RunChecks::snapshot(in);
        QString program = RunChecks::cliPath();
        bool unprivileged = false;
        QDir().mkpath(out);

        if (fault == u"read-only output folder") {
            unprivileged = true;
            QVERIFY(QFile::setPermissions(out, QFileDevice::ReadOther | QFileDevice::ExeOther |
                                                   QFileDevice::ReadOwner | QFileDevice::ExeOwner));
        } else if (fault.startsWith(QStringLiteral("ffmpeg m")) ||
                   fault.endsWith(QStringLiteral("executable"))) {
            // The front end laid out as installed, its ffmpeg gone or not runnable.
            const QString tree =
                path(QStringLiteral("faults/") + fault + QStringLiteral("/install"));
            QVERIFY(QDir().mkpath(tree + QStringLiteral("/bin")) &&
                    QDir().mkpath(tree + QStringLiteral("/lib/tonbrook")));
            program = tree + QStringLiteral("/bin/tonbrook-cli");
            QVERIFY(QFile::copy(RunChecks::cliPath(), program));
            // An installation fault stops the run with one message; no file is blamed.
            for (Input &input : inputs)
                input.expect = Expect::Untouched;
            if (fault.endsWith(QStringLiteral("executable"))) {
                const QString copy = tree + QStringLiteral("/lib/tonbrook/ffmpeg");
                QVERIFY(QFile::copy(TestEnvironment::ffmpegPath(), copy));
                QVERIFY(
                    QFile::setPermissions(copy, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
            }
        } else if (fault == u"full file system") {
            const QByteArray target = QFile::encodeName(out);
            if (::mount("tonbrook-test", target.constData(), "tmpfs", 0, "size=3m") != 0)
                QSKIP(qPrintable(QStringLiteral("cannot mount a 3 MB file system here (") +
                                 QString::fromLocal8Bit(std::strerror(errno)) +
                                 QStringLiteral("); run as root outside a restricted container")));
            for (Input &input : inputs)
                input.expect = Expect::Either; // the first of them may still fit
        } else {
            for (Input &input : inputs)
                input.expect = Expect::Either;
        }

        Watchdog watchdog(fault, 300s);
        RunChecks::CliRun run;
        if (fault.endsWith(QStringLiteral("mid-run"))) {
            // Wait until ffmpeg writes a hidden file, then pull the floor away.
            QProcess process;
            process.start(program, {QStringLiteral("--json"), QStringLiteral("-o"), out, in});
            QVERIFY(process.waitForStarted());
            QTRY_VERIFY_WITH_TIMEOUT(!RunChecks::partFilesBelow(out).isEmpty(), 60000);
            if (fault == u"output folder removed mid-run") {
                QVERIFY(QDir(out).removeRecursively());
            } else {
                // A part file seen may be finished a moment later: take the
                // first whose writer is still there to be killed.
                QString victim;
                QElapsedTimer trying;
                trying.start();
                while (victim.isEmpty() && trying.elapsed() < 60000) {
                    for (const QString &part : RunChecks::partFilesBelow(out))
                        if (victim.isEmpty() && killFFmpegWriting(part))
                            victim = PartFile::destinationName(part);
                    QTest::qWait(5);
                }
                QVERIFY2(!victim.isEmpty(), "no ffmpeg could be caught writing");
                for (Input &input : inputs)
                    input.expect = input.name == victim ? Expect::Failed : Expect::Processed;
            }
            QVERIFY(process.waitForFinished(240000));
            run = {process.exitStatus() == QProcess::NormalExit, process.exitCode(),
                   process.readAllStandardOutput(),
                   QString::fromUtf8(process.readAllStandardError())};
        } else {
            run = RunChecks::runCli({QStringLiteral("--json"), QStringLiteral("-o"), out, in},
                                    240000, program, unprivileged);
        }
        if (fault == u"full file system") {
            ::umount(QFile::encodeName(out).constData());
            int full = 0;
            for (const QJsonObject &entry : reportedBySource(run.out)) {
                const QString name = fileNameOf(entry.value(QStringLiteral("source")).toString());
                full += entry.value(QStringLiteral("message")).toString() ==
                        L::text(L::DiskFullMessage, name);
            }
            QVERIFY2(full > 0, run.out.constData());
        }
        QVERIFY2(run.finished, qPrintable(QStringLiteral("crashed or hung: ") + run.err));
        if (fault.startsWith(QStringLiteral("ffmpeg m")) ||
            fault.endsWith(QStringLiteral("executable"))) {
            QCOMPARE(run.status, 3);
            const QString problem = L::text(
                L::InstallationProblem,
                systemErrorText(fault.endsWith(QStringLiteral("executable")) ? EACCES : ENOENT));
            QCOMPARE(run.err.count(problem), 1);
        } else {
            QCOMPARE(run.status, 1);
        }
        checkOutcomes(run.out, in, inputs, fault != u"output folder removed mid-run");
        checkAfterRun(sources, {in, out});
    }
};

QTEST_GUILESS_MAIN(ReliabilityTest)
#include "ReliabilityTest.moc"

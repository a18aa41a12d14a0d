// SPDX-License-Identifier: GPL-3.0-or-later
//
// The ffmpeg that ships (where it is found, what it is, what it links, what
// its libavformat reads of a file's header) and the runner that starts it,
// with the shell standing in for ffmpeg.
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "engine/AudioMetadata.h"
#include "engine/BuildInfo.h"
#include "engine/CancellationToken.h"
#include "engine/FFmpegError.h"
#include "engine/FFmpegRunner.h"
#include "engine/ResourceLocator.h"
#include "model/StandardPath.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <csignal>
#include <cstring>
#include <future>
#include <sys/resource.h>

using namespace std::chrono_literals;

namespace {

FFmpegResult runScript(const QString &script, const CancellationToken &token = {},
                       const QStringList &arguments = {})
{
    return FFmpegRunner(u"/bin/sh"_qs)
        .run(QStringList{u"-c"_qs, script, u"sh"_qs} + arguments, token);
}

// The nice value of our one child (field 19 of its /proc stat line), or
// nothing while there is not exactly one.
std::optional<int> childNiceValue()
{
    const QList<qint64> children = TestEnvironment::childProcessIds();
    QFile stat(u"/proc/%1/stat"_qs.arg(children.value(0)));
    if (children.size() != 1 || !stat.open(QIODevice::ReadOnly))
        return std::nullopt;
    // The name in parentheses may hold spaces; fields 3 onwards follow it.
    const QByteArray line = stat.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return fields.size() > 16 ? std::optional(fields[16].toInt()) : std::nullopt;
}

QString output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

QString ffmpeg(const char *option)
{
    return output(TestEnvironment::ffmpegPath(),
                  {QStringLiteral("-hide_banner"), QString::fromLatin1(option)});
}

} // namespace

class FFmpegTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    // Every run reaps its child, whatever happened to it.
    void cleanup() { QCOMPARE(TestEnvironment::childProcessIds(), QList<qint64>()); }

    void foundBesideTheExecutablesOnly()
    {
        const ResourceLocator resources(TestEnvironment::buildBinDirectory());
        QCOMPARE(resources.ffmpegPath(), std::optional(TestEnvironment::ffmpegPath()));
        QVERIFY(resources.licenseTextPath(QStringLiteral("FFmpeg-LGPLv3.txt")));
        QVERIFY(resources.licenseTextPath(QStringLiteral("LAME-LGPL.txt")));
        QVERIFY(!resources.licenseTextPath(QStringLiteral("../licenses/LAME-LGPL.txt")));
        // Anywhere else there is simply none: no search path, no system ffmpeg.
        QTemporaryDir elsewhere;
        QVERIFY(!ResourceLocator(elsewhere.path()).ffmpegPath());
    }

    // The pinned LGPL v3 build, with LAME and libav* linked in, not loaded.
    void isThePinnedStaticLgplBuildWithLame()
    {
        const QString version = ffmpeg("-version");
        QVERIFY2(
            version.startsWith(u"ffmpeg version " + QLatin1StringView(BuildInfo::ffmpegVersion)),
            qPrintable(version.left(200)));
        QVERIFY(version.contains(QStringLiteral("--enable-version3")));
        QVERIFY(version.contains(QStringLiteral("--enable-libmp3lame")));
        QVERIFY(!version.contains(QStringLiteral("--enable-gpl")));
        const QString licence = ffmpeg("-L");
        QVERIFY(licence.contains(QStringLiteral("GNU Lesser General Public License")));
        QVERIFY(licence.contains(QStringLiteral("version 3")));
        const QString ldd = QStandardPaths::findExecutable(QStringLiteral("ldd"));
        if (ldd.isEmpty())
            QSKIP("ldd is not installed");
        const QString libraries = output(ldd, {TestEnvironment::ffmpegPath()});
        QVERIFY(libraries.contains(QStringLiteral("libc.so")));
        for (const char *name : {"libmp3lame", "libav", "libsw"})
            QVERIFY2(!libraries.contains(QLatin1StringView(name)), qPrintable(libraries));
    }

    // A CAF declares its rate as a float64, which libavformat truncates:
    // the header's own value is read, rounded half away from zero.
    void readsTheRateACafDeclares()
    {
        const QString path = m_dir.filePath(QStringLiteral("a.caf"));
        QVERIFY(
            TestAudio::writeWav(path + u".wav", 44100, 2, {TestAudio::Segment::sine(-20, 0.5)}));
        QCOMPARE(TestAudio::encode(TestEnvironment::ffmpegPath(), path + u".wav", path), QString());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(8));
        QCOMPARE(file.read(4), QByteArray("desc"));
        const double declared = 44099.6;
        quint64 bits;
        std::memcpy(&bits, &declared, sizeof bits);
        bits = qToBigEndian(bits);
        QVERIFY(file.seek(20) && file.write(reinterpret_cast<const char *>(&bits), 8) == 8);
        file.close();
        QCOMPARE(AudioMetadata::sampleRate(path), std::optional(44100));
        QCOMPARE(AudioMetadata::roundedSampleRate(0), std::nullopt);
        QCOMPARE(AudioMetadata::roundedSampleRate(-44100), std::nullopt);
    }

    // What the child printed and its status come back as they were, whatever their size.
    void results_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("out");
        QTest::addColumn<QString>("err");
        QTest::newRow("status 255")
            << u"printf out; printf err >&2; exit 255"_qs << 255 << QByteArray("out") << u"err"_qs;
        // Megabytes of standard error while standard output stays open do not stall.
        QTest::newRow("8 MB of standard error") << u"head -c 8388608 /dev/zero | tr '\\0' e >&2"_qs
                                                << 0 << QByteArray() << QString(8 << 20, u'e');
        // ffmpeg echoes the input's name, which need not be UTF-8: its bytes are kept.
        QTest::newRow("bytes that are not UTF-8")
            << u"printf 'ok\\377\\376\\303'; printf '\\303\\251' >&2"_qs << 0
            << QByteArray("ok\xff\xfe\xc3") << u"\u00e9"_qs;
        // ffmpeg watches standard input for keys: it must not read the terminal.
        QTest::newRow("standard input is the null device")
            << u"readlink /proc/self/fd/0"_qs << 0 << QByteArray("/dev/null\n") << QString();
        // Hostile file names are passed by the reliability test; these two are not names.
        QTest::newRow("arguments unchanged")
            << u"printf '%s\\0' \"$@\""_qs << 0 << QByteArray("\0$HOME;|&*\0", 11) << QString();
        QTest::newRow("output closed early, still waited for")
            << u"exec >&- 2>&-; sleep 0.15; exit 7"_qs << 7 << QByteArray() << QString();
    }

    void results()
    {
        QFETCH(QString, script);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, out);
        QFETCH(QString, err);
        const FFmpegResult result = runScript(script, {}, {QString(), u"$HOME;|&*"_qs});
        QCOMPARE(result.exitCode, exitCode);
        QCOMPARE(encodedPath(result.standardOutput), out);
        QCOMPARE(result.standardError, err);
    }

    void launchFailures_data()
    {
        QTest::addColumn<QByteArray>("contents"); // empty: no file at all
        QTest::addColumn<bool>("executable");
        QTest::addColumn<QString>("expected");
        QTest::newRow("missing") << QByteArray() << false << u"No such file or directory"_qs;
        QTest::newRow("not executable")
            << QByteArray("#!/bin/sh\n") << false << u"Permission denied"_qs;
        QTest::newRow("not a program")
            << QByteArray("plain text\n") << true << u"Exec format error"_qs;
        QTest::newRow("no binary at all") << QByteArray() << false << QString();
    }

    // A program that cannot be started says why in the system's words; none at all is a kind of its
    // own.
    void launchFailures()
    {
        QFETCH(QByteArray, contents);
        QFETCH(bool, executable);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        QFile file(dir.filePath(u"ffmpeg"_qs));
        QVERIFY(contents.isEmpty() ||
                (file.open(QIODevice::WriteOnly) && file.write(contents) > 0));
        file.close();
        QVERIFY(contents.isEmpty() ||
                file.setPermissions(QFile::ReadOwner |
                                    (executable ? QFile::ExeOwner : QFile::WriteOwner)));
        const FFmpegRunner runner(expected.isEmpty() ? std::nullopt
                                                     : std::optional(file.fileName()));
        try {
            runner.run({}, {});
            QFAIL("started");
        } catch (const FFmpegError &error) {
            QCOMPARE(error.kind(), expected.isEmpty() ? FFmpegError::Kind::BinaryNotFound
                                                      : FFmpegError::Kind::LaunchFailed);
            QCOMPARE(error.systemDescription(), expected);
        }
    }

    // A set token ends the child within a poll interval or so, at any moment of
    // its run. The child gives way to the desktop: ten steps nicer than we are.
    void cancelling_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<bool>("setBefore");
        QTest::newRow("before the run") << u"exec sleep 10"_qs << true;
        QTest::newRow("while it runs") << u"exec sleep 10"_qs << false;
        QTest::newRow("after it closed its output") << u"exec >&- 2>&-; exec sleep 10"_qs << false;
    }

    void cancelling()
    {
        QFETCH(QString, script);
        QFETCH(bool, setBefore);
        CancellationToken token;
        if (setBefore)
            token.cancel();
        auto run = std::async(std::launch::async, [&] { return runScript(script, token); });
        if (!setBefore) {
            const int nicer = std::min(::getpriority(PRIO_PROCESS, 0) + 10, 19);
            QTRY_COMPARE(childNiceValue(), std::optional(nicer));
            QVERIFY(run.wait_for(100ms) == std::future_status::timeout);
        }
        QElapsedTimer timer;
        timer.start();
        token.cancel();
        QCOMPARE(run.get().exitCode, SIGTERM);
        QVERIFY2(timer.elapsed() < 200, qPrintable(QString::number(timer.elapsed())));
    }

    // Runs side by side keep their own output and status.
    void concurrentRuns()
    {
        std::vector<std::future<FFmpegResult>> runs;
        for (int i = 0; i < 6; ++i)
            runs.push_back(std::async(std::launch::async, [i] {
                return runScript(
                    u"printf \"run $1\"; sleep 0.1; head -c $((200000 + $1)) /dev/zero >&2; exit $1"_qs,
                    {}, {QString::number(i)});
            }));
        for (int i = 0; i < 6; ++i) {
            const FFmpegResult result = runs[i].get();
            QCOMPARE(result.exitCode, i);
            QCOMPARE(result.standardOutput, u"run %1"_qs.arg(i));
            QCOMPARE(result.standardError.size(), 200000 + i);
        }
    }
};

QTEST_GUILESS_MAIN(FFmpegTest)
#include "FFmpegTest.moc"

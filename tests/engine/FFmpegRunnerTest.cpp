// SPDX-License-Identifier: GPL-3.0-or-later
//
// The runner, with the shell standing in for ffmpeg.
#include "engine/FFmpegRunner.h"

#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/FFmpegError.h"
#include "model/StandardPath.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
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

} // namespace

class FFmpegRunnerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Every run reaps its child, whatever happened to it.
    void cleanup() { QCOMPARE(TestEnvironment::childProcessIds(), QList<qint64>()); }

    // What the child printed and its status come back as they were, whatever their size.
    void results_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("out");
        QTest::addColumn<QString>("err");
        QTest::newRow("status 255") << u"printf out; printf err >&2; exit 255"_qs << QStringList()
                                    << 255 << QByteArray("out") << u"err"_qs;
        // Megabytes of standard error while standard output stays open do not stall.
        QTest::newRow("8 MB of standard error")
            << u"head -c 8388608 /dev/zero | tr '\\0' e >&2"_qs << QStringList() << 0
            << QByteArray() << QString(8 << 20, u'e');
        // ffmpeg echoes the input's name, which need not be UTF-8: its bytes are kept.
        QTest::newRow("bytes that are not UTF-8")
            << u"printf 'ok\\377\\376\\303'; printf '\\303\\251' >&2"_qs << QStringList() << 0
            << QByteArray("ok\xff\xfe\xc3") << u"\u00e9"_qs;
        const QStringList awkward{u"/tmp/My Songs/Kick 01.wav"_qs,
                                  u"quote\"d 'single'"_qs,
                                  u"Тишина \u00fc \U0001F3B5.wav"_qs,
                                  u"-leading-dash"_qs,
                                  u"$HOME;|&*"_qs,
                                  QString(),
                                  u"line\nbreak"_qs};
        QTest::newRow("arguments unchanged")
            << u"printf '%s\\0' \"$@\""_qs << awkward << 0
            << QString(awkward.join(QChar(0)) + QChar(0)).toUtf8() << QString();
        // ffmpeg watches standard input for keys: it must not read the terminal.
        QTest::newRow("standard input is the null device")
            << u"readlink /proc/self/fd/0"_qs << QStringList() << 0 << QByteArray("/dev/null\n")
            << QString();
        QTest::newRow("output closed early, still waited for")
            << u"exec >&- 2>&-; sleep 0.15; exit 7"_qs << QStringList() << 7 << QByteArray()
            << QString();
    }

    void results()
    {
        QFETCH(QString, script);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, out);
        QFETCH(QString, err);
        const FFmpegResult result = runScript(script, {}, arguments);
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

QTEST_GUILESS_MAIN(FFmpegRunnerTest)
#include "FFmpegRunnerTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/FFmpegRunner.h"

#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/FFmpegError.h"
#include "model/StandardPath.h"

#include <QElapsedTimer>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <future>
#include <sys/resource.h>
#include <thread>

using namespace std::chrono_literals;

namespace {

FFmpegRunner helperRunner()
{
    return FFmpegRunner(QStringLiteral(TONBROOK_RUNNER_HELPER));
}

QStringList args(std::initializer_list<const char *> items)
{
    QStringList list;
    for (const char *item : items)
        list.append(QString::fromUtf8(item));
    return list;
}

// The nice value of our one child (field 19 of its /proc stat line), or
// nothing while there is not exactly one.
std::optional<int> childNiceValue()
{
    const QList<qint64> children = TestEnvironment::childProcessIds();
    if (children.size() != 1)
        return std::nullopt;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(children.first()));
    if (!stat.open(QIODevice::ReadOnly))
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
    void cleanup()
    {
        // Every run reaps its child, whatever happened to it.
        QCOMPARE(TestEnvironment::childProcessIds(), QList<qint64>());
    }

    void absentBinaryThrowsBeforeStarting()
    {
        const FFmpegRunner runner(std::nullopt);
        const CancellationToken token;
        try {
            runner.run(args({"-version"}), token);
            QFAIL("expected binaryNotFound");
        } catch (const FFmpegError &error) {
            QCOMPARE(error.kind(), FFmpegError::Kind::BinaryNotFound);
        }
    }

    void launchFailureCarriesSystemWording_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<bool>("executable");
        QTest::addColumn<bool>("create");
        QTest::addColumn<QString>("expected");

        QTest::newRow("missing") << QByteArray() << false << false
                                 << QStringLiteral("No such file or directory");
        QTest::newRow("not executable")
            << QByteArray("#!/bin/sh\n") << false << true << QStringLiteral("Permission denied");
        QTest::newRow("not a program")
            << QByteArray("plain text\n") << true << true << QStringLiteral("Exec format error");
    }

    void launchFailureCarriesSystemWording()
    {
        QFETCH(QByteArray, contents);
        QFETCH(bool, executable);
        QFETCH(bool, create);
        QFETCH(QString, expected);

        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("ffmpeg"));
        if (create) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(contents);
            file.close();
            QVERIFY(file.setPermissions(executable ? QFile::ReadOwner | QFile::ExeOwner
                                                   : QFile::ReadOwner | QFile::WriteOwner));
        }
        const FFmpegRunner runner(path);
        const CancellationToken token;
        try {
            runner.run({}, token);
            QFAIL("expected launchFailed");
        } catch (const FFmpegError &error) {
            QCOMPARE(error.kind(), FFmpegError::Kind::LaunchFailed);
            QCOMPARE(error.systemDescription(), expected);
        }
    }

    void exitStatusIsAResultNotAnError_data()
    {
        QTest::addColumn<int>("status");
        QTest::newRow("0") << 0;
        QTest::newRow("1") << 1;
        QTest::newRow("255") << 255;
    }

    void exitStatusIsAResultNotAnError()
    {
        QFETCH(int, status);
        const CancellationToken token;
        const FFmpegResult result = helperRunner().run(
            {QStringLiteral("stdout"), QStringLiteral("out"), QStringLiteral("stderr"),
             QStringLiteral("err"), QStringLiteral("exit"), QString::number(status)},
            token);
        QCOMPARE(result, (FFmpegResult{status, QStringLiteral("out"), QStringLiteral("err")}));
    }

    void megabytesOfStandardErrorDoNotStall()
    {
        const CancellationToken token;
        constexpr int size = 8 * 1024 * 1024;
        const FFmpegResult result =
            helperRunner().run({QStringLiteral("stderr-bytes"), QString::number(size)}, token);
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.standardOutput.isEmpty());
        QCOMPARE(result.standardError.size(), size);
        QCOMPARE(result.standardError.count(u'e'), size);
    }

    // ffmpeg echoes the input's name, and a name need not be UTF-8: its bytes
    // are kept (as in paths), so the measurement after it can still be read.
    void bytesThatAreNotUtf8AreKept()
    {
        const CancellationToken token;
        const FFmpegResult result =
            helperRunner().run({QStringLiteral("stdout-invalid-utf8"), QStringLiteral("stderr"),
                                QStringLiteral("intact \u00e9")},
                               token);
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(encodedPath(result.standardOutput), QByteArray("ok\xff\xfe\xc3"));
        QCOMPARE(result.standardError, QStringLiteral("intact \u00e9"));
    }

    void argumentsReachTheChildUnchanged()
    {
        const QStringList passed{QStringLiteral("/tmp/My Songs/Kick 01.wav"),
                                 QStringLiteral("quote\"d 'single'"),
                                 QStringLiteral("Тишина \u00fc \U0001F3B5.wav"),
                                 QStringLiteral("-leading-dash"),
                                 QStringLiteral("$HOME;|&*"),
                                 QString(),
                                 QStringLiteral("line\nbreak")};
        const CancellationToken token;
        const FFmpegResult result =
            helperRunner().run(QStringList{QStringLiteral("echo-args")} + passed, token);
        QCOMPARE(result.exitCode, 0);
        QStringList received = result.standardOutput.split(QChar(0));
        QCOMPARE(received.takeLast(), QString()); // after the last terminator
        QCOMPARE(received, passed);
    }

    void standardInputIsTheNullDevice()
    {
        const CancellationToken token;
        const FFmpegResult result = helperRunner().run({QStringLiteral("report-stdin")}, token);
        QCOMPARE(result.standardOutput, QStringLiteral("stdin=devnull"));
    }

    void tokenSetBeforeRunStillLaunchesThenTerminates()
    {
        CancellationToken token;
        token.cancel();
        QElapsedTimer timer;
        timer.start();
        const FFmpegResult result =
            helperRunner().run({QStringLiteral("stdout"), QStringLiteral("started"),
                                QStringLiteral("sleep"), QStringLiteral("10000")},
                               token);
        QVERIFY2(timer.elapsed() < 2000, "the child was not terminated promptly");
        QCOMPARE(result.exitCode, SIGTERM);
    }

    void cancellingARunningChildTerminatesIt_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("while writing")
            << QStringList{QStringLiteral("sleep"), QStringLiteral("10000")};
        // The child has closed its output but goes on: the token is still watched.
        QTest::newRow("after closing its output") << QStringList{
            QStringLiteral("close-output"), QStringLiteral("sleep"), QStringLiteral("10000")};
    }

    void cancellingARunningChildTerminatesIt()
    {
        QFETCH(QStringList, arguments);
        CancellationToken token;
        const FFmpegRunner runner = helperRunner();
        auto run = std::async(std::launch::async, [&] { return runner.run(arguments, token); });
        std::this_thread::sleep_for(300ms);
        QVERIFY(run.wait_for(0ms) == std::future_status::timeout);

        QElapsedTimer timer;
        timer.start();
        token.cancel();
        const FFmpegResult result = run.get();
        // One poll interval plus the child's own exit.
        QVERIFY2(timer.elapsed() < 200, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(result.exitCode, SIGTERM);
    }

    // ffmpeg gives way to the desktop: ten steps nicer than we are.
    void childRunsAtALowerPriority()
    {
        const int ours = ::getpriority(PRIO_PROCESS, 0);
        if (ours + 10 > 19)
            QSKIP("already at the lowest priority: nothing to tell apart");
        CancellationToken token;
        const FFmpegRunner runner = helperRunner();
        auto run = std::async(std::launch::async, [&] {
            return runner.run({QStringLiteral("sleep"), QStringLiteral("10000")}, token);
        });
        const auto stop = qScopeGuard([&token] { token.cancel(); });
        QTRY_COMPARE(childNiceValue(), std::optional(ours + 10));
    }

    void childThatClosesOutputEarlyIsStillWaitedFor()
    {
        const CancellationToken token;
        const FFmpegResult result =
            helperRunner().run({QStringLiteral("close-output"), QStringLiteral("sleep"),
                                QStringLiteral("150"), QStringLiteral("exit"), QStringLiteral("7")},
                               token);
        QCOMPARE(result.exitCode, 7);
    }

    void concurrentRunsKeepTheirOwnOutput()
    {
        const FFmpegRunner runner = helperRunner();
        const CancellationToken token;
        std::vector<std::future<FFmpegResult>> runs;
        for (int i = 0; i < 6; ++i) {
            runs.push_back(std::async(std::launch::async, [&runner, &token, i] {
                return runner.run({QStringLiteral("stdout"), QStringLiteral("run %1").arg(i),
                                   QStringLiteral("sleep"), QStringLiteral("100"),
                                   QStringLiteral("stderr-bytes"), QString::number(200000 + i),
                                   QStringLiteral("exit"), QString::number(i)},
                                  token);
            }));
        }
        for (int i = 0; i < 6; ++i) {
            const FFmpegResult result = runs[i].get();
            QCOMPARE(result.exitCode, i);
            QCOMPARE(result.standardOutput, QStringLiteral("run %1").arg(i));
            QCOMPARE(result.standardError.size(), 200000 + i);
        }
    }
};

QTEST_GUILESS_MAIN(FFmpegRunnerTest)
#include "FFmpegRunnerTest.moc"

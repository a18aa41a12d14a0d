// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnessAnalysisService.h"

#include "FakeFFmpegRunner.h"
#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/LoudnessAnalysisError.h"

#include <QTest>

#include <memory>

namespace {

const QString measurementBlock = QStringLiteral(
    "{\n\t\"input_i\" : \"-20.50\",\n\t\"input_tp\" : \"-6.20\",\n\t\"input_lra\" : \"7.10\",\n"
    "\t\"input_thresh\" : \"-31.00\",\n\t\"target_offset\" : \"0.30\"\n}\n");

} // namespace

class LoudnessAnalysisServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(TestEnvironment::commaLocaleActiveAsRequested()); }

    void commandLine_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<double>("target");
        QTest::addColumn<double>("ceiling");
        QTest::addColumn<QString>("filter");

        QTest::newRow("streaming") << QStringLiteral("/a/b.wav") << -14.0 << -1.0
                                   << QStringLiteral("loudnorm=I=-14.0:TP=-1.0:print_format=json");
        QTest::newRow("broadcast") << QStringLiteral("/a/b.wav") << -23.0 << -1.5
                                   << QStringLiteral("loudnorm=I=-23.0:TP=-1.5:print_format=json");
        QTest::newRow("custom, one decimal")
            << QStringLiteral("/a/b.wav") << -18.25 << -0.5
            << QStringLiteral("loudnorm=I=-18.2:TP=-0.5:print_format=json");
        QTest::newRow("path with spaces and Cyrillic")
            << QStringLiteral("/home/u/Звуки и шумы/Take 1 \"final\".wav") << -16.0 << -2.0
            << QStringLiteral("loudnorm=I=-16.0:TP=-2.0:print_format=json");
    }

    void commandLine()
    {
        QFETCH(QString, path);
        QFETCH(double, target);
        QFETCH(double, ceiling);
        QFETCH(QString, filter);

        auto runner = std::make_shared<FakeFFmpegRunner>();
        runner->respond = [](const QStringList &) { return FFmpegResult{0, {}, measurementBlock}; };
        const LoudnessAnalysisService service(runner);
        const CancellationToken token;
        service.analyze(path, target, ceiling, token);

        QCOMPARE(runner->calls().size(), 1);
        const FakeFFmpegRunner::Call call = runner->calls().constFirst();
        QCOMPARE(call.arguments,
                 (QStringList{QStringLiteral("-hide_banner"), QStringLiteral("-nostats"),
                              QStringLiteral("-i"), path, QStringLiteral("-af"), filter,
                              QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")}));
        QCOMPARE(call.token, &token);
    }

    void judgesTheRun_data()
    {
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("standardError");
        QTest::addColumn<QString>("standardOutput");
        // 0: measurement, 1: ffmpegFailed, 2: parseFailed
        QTest::addColumn<int>("outcome");

        QTest::newRow("clean run") << 0 << measurementBlock << QString() << 0;
        QTest::newRow("non-zero after a full block") << 255 << measurementBlock << QString() << 0;
        QTest::newRow("non-zero without a block")
            << 1 << QStringLiteral("x.wav: Invalid data found when processing input\n") << QString()
            << 1;
        QTest::newRow("zero without a block")
            << 0 << QStringLiteral("no block here\n") << QString() << 2;
        // Only standard error is read.
        QTest::newRow("block on standard output only")
            << 0 << QStringLiteral("log\n") << measurementBlock << 2;
    }

    void judgesTheRun()
    {
        QFETCH(int, exitCode);
        QFETCH(QString, standardError);
        QFETCH(QString, standardOutput);
        QFETCH(int, outcome);

        auto runner = std::make_shared<FakeFFmpegRunner>();
        runner->respond = [=](const QStringList &) {
            return FFmpegResult{exitCode, standardOutput, standardError};
        };
        const LoudnessAnalysisService service(runner);
        const CancellationToken token;
        try {
            const LoudnessMeasurement measurement =
                service.analyze(QStringLiteral("/x.wav"), -23, -1, token);
            QCOMPARE(outcome, 0);
            QCOMPARE(measurement, (LoudnessMeasurement{-20.5, -6.2, 7.1, -31.0, 0.3}));
        } catch (const LoudnessAnalysisError &error) {
            QCOMPARE_NE(outcome, 0);
            if (outcome == 1)
                QCOMPARE(error, LoudnessAnalysisError::ffmpegFailed(exitCode, standardError));
            else
                QCOMPARE(error, LoudnessAnalysisError::parseFailed(standardError));
        }
    }

    void runnerErrorsPassThroughUnchanged()
    {
        auto runner = std::make_shared<FakeFFmpegRunner>();
        runner->respond = [](const QStringList &) -> FFmpegResult {
            throw FFmpegError::launchFailed(QStringLiteral("Permission denied"));
        };
        const LoudnessAnalysisService service(runner);
        const CancellationToken token;
        try {
            service.analyze(QStringLiteral("/x.wav"), -23, -1, token);
            QFAIL("expected the runner's error");
        } catch (const FFmpegError &error) {
            QCOMPARE(error, FFmpegError::launchFailed(QStringLiteral("Permission denied")));
        }
    }
};

QTEST_GUILESS_MAIN(LoudnessAnalysisServiceTest)
#include "LoudnessAnalysisServiceTest.moc"

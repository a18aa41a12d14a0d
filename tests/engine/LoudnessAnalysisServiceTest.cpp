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

    // An awkward path travels as one argument, the run can be cancelled, and the
    // target reaches the meter's JSON in the comma locale too.
    void commandLine()
    {
        const QString path = QStringLiteral("/home/u/Звуки и шумы/Take 1 \"final\", -i x.wav");
        auto runner = std::make_shared<FakeFFmpegRunner>();
        runner->respond = [](const QStringList &) { return FFmpegResult{0, {}, measurementBlock}; };
        const LoudnessAnalysisService service(runner);
        const CancellationToken token;
        service.analyze(path, -18.25, -1, token);

        QCOMPARE(runner->calls().size(), 1);
        const FakeFFmpegRunner::Call call = runner->calls().constFirst();
        QCOMPARE(call.arguments.count(path), 1);
        QCOMPARE(call.arguments.at(call.arguments.indexOf(path) - 1), QStringLiteral("-i"));
        QVERIFY(call.arguments.filter(QStringLiteral("target_i=-18.2")).size() == 1);
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

// SPDX-License-Identifier: GPL-3.0-or-later
//
// The measuring pass with a stand-in ffmpeg: its command line, and what it
// makes of the JSON block ffmpeg prints at the end.
#include "engine/LoudnessAnalysisService.h"

#include "FakeFFmpegRunner.h"
#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/LoudnessAnalysisError.h"

#include <QTest>

namespace {

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

} // namespace

class LoudnessAnalysisServiceTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<FakeFFmpegRunner> m_runner = std::make_shared<FakeFFmpegRunner>();
    const LoudnessAnalysisService m_service{m_runner};

private Q_SLOTS:
    void initTestCase() { QVERIFY(TestEnvironment::commaLocaleActiveAsRequested()); }

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
        QTest::newRow("silence") << 0 << block(u"\"-inf\""_qs, u"\"-inf\""_qs)
                                 << "-inf -inf 7.1 -31 0.3";
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
        const CancellationToken token;
        QString outcome;
        try {
            const LoudnessMeasurement m = m_service.analyze(path, -18.25, -1, token);
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
        // The awkward path travels as one argument, the run can be cancelled, and
        // the target reaches the meter in the comma locale too.
        const FakeFFmpegRunner::Call call = m_runner->calls().constLast();
        QCOMPARE(call.arguments.count(path), 1);
        QCOMPARE(call.arguments.at(call.arguments.indexOf(path) - 1), QStringLiteral("-i"));
        QCOMPARE(call.arguments.filter(QStringLiteral("target_i=-18.2")).size(), 1);
        QCOMPARE(call.token, &token);
    }
};

QTEST_GUILESS_MAIN(LoudnessAnalysisServiceTest)
#include "LoudnessAnalysisServiceTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnormReport.h"

#include <QTest>

#include <limits>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

// What loudnorm prints at the end of a measuring pass, tab-indented.
QString block(const QString &inputI, const QString &inputTP = QStringLiteral("\"-6.20\""))
{
    return QStringLiteral("[Parsed_loudnorm_0 @ 0x55d0c8a1c2c0] \n{\n"
                          "\t\"input_i\" : %1,\n"
                          "\t\"input_tp\" : %2,\n"
                          "\t\"input_lra\" : \"7.10\",\n"
                          "\t\"input_thresh\" : \"-31.00\",\n"
                          "\t\"output_i\" : \"-14.02\",\n"
                          "\t\"output_tp\" : \"-1.00\",\n"
                          "\t\"output_lra\" : \"6.50\",\n"
                          "\t\"output_thresh\" : \"-24.51\",\n"
                          "\t\"normalization_type\" : \"dynamic\",\n"
                          "\t\"target_offset\" : \"0.30\"\n"
                          "}\n")
        .arg(inputI, inputTP);
}

} // namespace

class LoudnormReportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<double>("inputI");
        QTest::addColumn<double>("inputTP");

        QTest::newRow("plain block")
            << block(QStringLiteral("\"-20.50\"")) << true << -20.5 << -6.2;
        QTest::newRow("braces in earlier log lines")
            << QStringLiteral("Input #0, wav, from 'a{b}.wav':\n  title : {x}\n") +
                   block(QStringLiteral("\"-20.50\""))
            << true << -20.5 << -6.2;
        QTest::newRow("silence") << block(QStringLiteral("\"-inf\""), QStringLiteral("\"-inf\""))
                                 << true << -inf << -inf;
        QTest::newRow("infinity in other cases")
            << block(QStringLiteral("\"-INF\""), QStringLiteral("\"Inf\"")) << true << -inf << inf;
        QTest::newRow("bare number") << block(QStringLiteral("-20.50")) << false << 0.0 << 0.0;
        QTest::newRow("letters") << block(QStringLiteral("\"loud\"")) << false << 0.0 << 0.0;
        QTest::newRow("padded number")
            << block(QStringLiteral("\" -20.50\"")) << false << 0.0 << 0.0;
        QTest::newRow("cut short")
            << block(QStringLiteral("\"-20.50\"")).chopped(3) << false << 0.0 << 0.0;
        QTest::newRow("missing key")
            << block(QStringLiteral("\"-20.50\""))
                   .replace(QStringLiteral("\"target_offset\""), QStringLiteral("\"offset\""))
            << false << 0.0 << 0.0;
        QTest::newRow("no block") << QStringLiteral("Invalid data found when processing input\n")
                                  << false << 0.0 << 0.0;
        QTest::newRow("brace after the block")
            << block(QStringLiteral("\"-20.50\"")) + u'{' << false << 0.0 << 0.0;
        QTest::newRow("not json") << QStringLiteral("{ input_i: -20 }") << false << 0.0 << 0.0;
        QTest::newRow("empty") << QString() << false << 0.0 << 0.0;
    }

    void parse()
    {
        QFETCH(QString, output);
        QFETCH(bool, valid);
        QFETCH(double, inputI);
        QFETCH(double, inputTP);

        const auto measurement = LoudnormReport::parse(output);
        QCOMPARE(measurement.has_value(), valid);
        if (!valid)
            return;
        QCOMPARE(measurement->inputI, inputI);
        QCOMPARE(measurement->inputTP, inputTP);
        QCOMPARE(measurement->inputLRA, 7.1);
        QCOMPARE(measurement->inputThresh, -31.0);
        QCOMPARE(measurement->targetOffset, 0.3);
    }
};

QTEST_GUILESS_MAIN(LoudnormReportTest)
#include "LoudnormReportTest.moc"

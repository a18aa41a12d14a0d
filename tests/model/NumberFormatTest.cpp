// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/NumberFormat.h"

#include "TestEnvironment.h"

#include <QTest>

#include <limits>

class NumberFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(TestEnvironment::commaLocaleActiveAsRequested()); }

    void fixed_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<bool>("withSign");
        QTest::addColumn<QString>("expected");

        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("two decimals") << -14.0 << 2 << false << QStringLiteral("-14.00");
        // C rounds an exact binary tie to even; Qt's own formatting would say -18.3.
        QTest::newRow("tie to even") << -18.25 << 1 << false << QStringLiteral("-18.2");
        QTest::newRow("inexact half") << 2.675 << 2 << false << QStringLiteral("2.67");
        QTest::newRow("negative zero keeps sign") << -0.04 << 1 << false << QStringLiteral("-0.0");
        QTest::newRow("no decimals") << -14.0 << 0 << false << QStringLiteral("-14");
        QTest::newRow("infinity") << -inf << 2 << false << QStringLiteral("-inf");
        QTest::newRow("signed zero") << 0.0 << 1 << true << QStringLiteral("+0.0");
        QTest::newRow("signed positive") << 3.24 << 1 << true << QStringLiteral("+3.2");
        QTest::newRow("signed negative") << -1.0 << 1 << true << QStringLiteral("-1.0");
        QTest::newRow("signed rounds to -0.0") << -0.04 << 1 << true << QStringLiteral("-0.0");
    }

    void fixed()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QFETCH(bool, withSign);
        QFETCH(QString, expected);
        QCOMPARE(withSign ? NumberFormat::signedFixed(value, decimals)
                          : NumberFormat::fixed(value, decimals),
                 expected);
    }

    void parseDouble_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<double>("expected");

        QTest::newRow("plain") << QStringLiteral("-23.54") << true << -23.54;
        QTest::newRow("integer") << QStringLiteral("7") << true << 7.0;
        QTest::newRow("exponent") << QStringLiteral("1e3") << true << 1000.0;
        QTest::newRow("empty") << QString() << false << 0.0;
        QTest::newRow("leading space") << QStringLiteral(" -1") << false << 0.0;
        QTest::newRow("trailing text") << QStringLiteral("-23.5x") << false << 0.0;
        QTest::newRow("comma decimal") << QStringLiteral("-23,5") << false << 0.0;
        QTest::newRow("grouping") << QStringLiteral("1,000.5") << false << 0.0;
        QTest::newRow("letters") << QStringLiteral("abc") << false << 0.0;
        QTest::newRow("unicode minus") << QStringLiteral("\u22121") << false << 0.0;
    }

    void parseDouble()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(double, expected);
        const auto parsed = NumberFormat::parseDouble(text);
        QCOMPARE(parsed.has_value(), valid);
        if (valid)
            QCOMPARE(*parsed, expected);
    }
};

QTEST_GUILESS_MAIN(NumberFormatTest)
#include "NumberFormatTest.moc"

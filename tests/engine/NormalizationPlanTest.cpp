// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/NormalizationPlan.h"

#include <QTest>

#include <limits>

class NormalizationPlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void compute_data()
    {
        QTest::addColumn<double>("loudness");
        QTest::addColumn<double>("peak");
        QTest::addColumn<double>("target");
        QTest::addColumn<double>("ceiling");
        QTest::addColumn<double>("gain");
        QTest::addColumn<double>("expectedLUFS");
        QTest::addColumn<double>("expectedPeak");
        QTest::addColumn<bool>("limited");

        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("ceiling holds the gain back")
            << -20.0 << -3.0 << -14.0 << -1.0 << 2.0 << -18.0 << -1.0 << true;
        QTest::newRow("shortfall within 0.05 counts as reached")
            << -14.03 << -1.0 << -14.0 << -1.0 << 0.0 << -14.03 << -1.0 << false;
        QTest::newRow("already on target")
            << -23.0 << -6.0 << -23.0 << -1.0 << 0.0 << -23.0 << -6.0 << false;
        QTest::newRow("loud file turned down")
            << -8.0 << 0.5 << -14.0 << -1.0 << -6.0 << -14.0 << -5.5 << false;
        QTest::newRow("peak lands exactly on the ceiling")
            << -20.0 << -7.0 << -14.0 << -1.0 << 6.0 << -14.0 << -1.0 << false;
        QTest::newRow("turned down further for the ceiling")
            << -10.0 << 3.0 << -12.0 << -1.0 << -4.0 << -14.0 << -1.0 << true;
        QTest::newRow("shortfall just over 0.05")
            << -14.06 << -0.94 << -14.0 << -1.0 << -0.06 << -14.12 << -1.0 << true;
        QTest::newRow("silence") << -inf << -inf << -14.0 << -1.0 << 0.0 << -inf << -inf << false;
        QTest::newRow("too short to gate")
            << -inf << -12.0 << -14.0 << -1.0 << 0.0 << -inf << -12.0 << false;
    }

    void compute()
    {
        QFETCH(double, loudness);
        QFETCH(double, peak);
        QFETCH(double, target);
        QFETCH(double, ceiling);
        QFETCH(double, gain);
        QFETCH(double, expectedLUFS);
        QFETCH(double, expectedPeak);
        QFETCH(bool, limited);

        const NormalizationPlan plan =
            NormalizationPlan::compute({loudness, peak, 5, -30, 0}, target, ceiling);
        QCOMPARE(plan.gain, gain);
        QCOMPARE(plan.expectedLUFS, expectedLUFS);
        QCOMPARE(plan.expectedTruePeak, expectedPeak);
        QCOMPARE(plan.isPeakLimited, limited);
    }
};

QTEST_GUILESS_MAIN(NormalizationPlanTest)
#include "NormalizationPlanTest.moc"

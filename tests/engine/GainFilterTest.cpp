// SPDX-License-Identifier: GPL-3.0-or-later
//
// One static gain per file: the plan under the true-peak ceiling, and the
// filter that applies it, written as ffmpeg will read it.
#include "engine/GainFilter.h"

#include "TestEnvironment.h"

#include <QTest>

#include <limits>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

QString loudnorm(const char *options)
{
    return QStringLiteral("loudnorm=") + QLatin1StringView(options) +
           QStringLiteral(":linear=true:print_format=summary");
}

} // namespace

class GainFilterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(TestEnvironment::commaLocaleActiveAsRequested()); }

    void plan_data()
    {
        QTest::addColumn<QList<double>>("in");  // loudness, peak, target, ceiling
        QTest::addColumn<QList<double>>("out"); // gain, loudness, peak, 1 when limited
        QTest::newRow("ceiling holds the gain back")
            << QList{-20.0, -3.0, -14.0, -1.0} << QList{2.0, -18.0, -1.0, 1.0};
        QTest::newRow("shortfall within 0.05 counts as reached")
            << QList{-14.03, -1.0, -14.0, -1.0} << QList{0.0, -14.03, -1.0, 0.0};
        QTest::newRow("shortfall just over 0.05")
            << QList{-14.06, -0.94, -14.0, -1.0} << QList{-0.06, -14.12, -1.0, 1.0};
        QTest::newRow("loud file turned down")
            << QList{-8.0, 0.5, -14.0, -1.0} << QList{-6.0, -14.0, -5.5, 0.0};
        QTest::newRow("peak lands exactly on the ceiling")
            << QList{-20.0, -7.0, -14.0, -1.0} << QList{6.0, -14.0, -1.0, 0.0};
        QTest::newRow("turned down further for the ceiling")
            << QList{-10.0, 3.0, -12.0, -1.0} << QList{-4.0, -14.0, -1.0, 1.0};
        QTest::newRow("too short to gate")
            << QList{-inf, -12.0, -14.0, -1.0} << QList{0.0, -inf, -12.0, 0.0};
    }

    void plan()
    {
        QFETCH(QList<double>, in);
        const NormalizationPlan plan =
            NormalizationPlan::compute({in[0], in[1], 5, -30, 0}, in[2], in[3]);
        QFETCH(QList<double>, out);
        const QList<double> got{plan.gain, plan.expectedLUFS, plan.expectedTruePeak,
                                double(plan.isPeakLimited)};
        for (qsizetype i = 0; i < out.size(); ++i)
            QCOMPARE(got[i], out[i]);
    }

    // Target as given, ceiling -1 dBTP throughout.
    void choose_data()
    {
        QTest::addColumn<LoudnessMeasurement>("measurement");
        QTest::addColumn<double>("target");
        QTest::addColumn<QString>("text");

        QTest::newRow("plain")
            << LoudnessMeasurement{-20.5, -8.2, 7.1, -31.0, 0.3} << -14.0
            << loudnorm("I=-14.00:TP=-1.00:LRA=7.10:measured_I=-20.50:measured_LRA=7.10:"
                        "measured_TP=-8.20:measured_thresh=-31.00:offset=0.30");
        // loudnorm takes a range of 0, a loudness of 0 and a threshold of -70 for "not
        // measured" and leaves linear mode; a range under 7 is asked for as 7.
        QTest::newRow("values on loudnorm's defaults moved off them")
            << LoudnessMeasurement{-0.004, 0.5, 0.0, -70.001, 0.0} << -14.0
            << loudnorm("I=-14.00:TP=-1.00:LRA=7.00:measured_I=-0.01:measured_LRA=0.01:"
                        "measured_TP=0.50:measured_thresh=-69.99:offset=0.00");
        // Written as -17.99 the peak would land 0.01 over the ceiling in loudnorm's own sum.
        QTest::newRow("limited: rounding over the ceiling lowers I")
            << LoudnessMeasurement{-19.996, -3.004, 7.1, -30.0, 0.3} << -14.0
            << loudnorm("I=-18.00:TP=-1.00:LRA=7.10:measured_I=-20.00:measured_LRA=7.10:"
                        "measured_TP=-3.00:measured_thresh=-30.00:offset=0.30");
        QTest::newRow("limited: still over after lowering")
            << LoudnessMeasurement{-20.006, -2.994, 7.1, -30.0, 0.3} << -14.0
            << QStringLiteral("volume=1.99dB:precision=double");
        QTest::newRow("range beyond loudnorm's 50")
            << LoudnessMeasurement{-30.0, -10.0, 55.0, -45.0, 0.0} << -23.0
            << QStringLiteral("volume=7.00dB:precision=double");
        QTest::newRow("clipped file above 0 LUFS")
            << LoudnessMeasurement{3.1, 3.5, 1.0, -7.0, -17.0} << -14.0
            << QStringLiteral("volume=-17.10dB:precision=double");
        QTest::newRow("limited below loudnorm's -70")
            << LoudnessMeasurement{-69.8, 0.0, 3.0, -80.0, 0.0} << -14.0
            << QStringLiteral("volume=-1.00dB:precision=double");
        QTest::newRow("silence") << LoudnessMeasurement{-inf, -inf, 0, -70, inf} << -14.0
                                 << QString();
        QTest::newRow("shorter than a gating block")
            << LoudnessMeasurement{-inf, -12.0, 0, -70, inf} << -14.0 << QString();
    }

    void choose()
    {
        QFETCH(LoudnessMeasurement, measurement);
        QFETCH(double, target);
        QFETCH(QString, text);
        const GainFilter filter = GainFilter::choose(
            measurement, NormalizationPlan::compute(measurement, target, -1.0), -1.0);
        QCOMPARE(filter.text, text);
        QCOMPARE(filter.kind, text.isEmpty()                ? GainFilter::Kind::None
                              : text.startsWith(u"volume=") ? GainFilter::Kind::Volume
                                                            : GainFilter::Kind::Loudnorm);
    }
};

QTEST_GUILESS_MAIN(GainFilterTest)
#include "GainFilterTest.moc"

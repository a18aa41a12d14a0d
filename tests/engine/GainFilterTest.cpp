// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/GainFilter.h"

#include "TestEnvironment.h"

#include <QTest>

#include <limits>

namespace {

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

    void choose_data()
    {
        QTest::addColumn<LoudnessMeasurement>("measurement");
        QTest::addColumn<double>("target");
        QTest::addColumn<GainFilter::Kind>("kind");
        QTest::addColumn<QString>("text");

        using K = GainFilter::Kind;
        const double inf = std::numeric_limits<double>::infinity();
        // Target as given, ceiling -1 dBTP throughout.
        QTest::newRow("plain")
            << LoudnessMeasurement{-20.5, -8.2, 7.1, -31.0, 0.3} << -14.0 << K::Loudnorm
            << loudnorm("I=-14.00:TP=-1.00:LRA=7.10:measured_I=-20.50:measured_LRA=7.10:"
                        "measured_TP=-8.20:measured_thresh=-31.00:offset=0.30");
        QTest::newRow("narrow range asks for 7")
            << LoudnessMeasurement{-20.5, -8.2, 3.0, -31.0, 0.3} << -14.0 << K::Loudnorm
            << loudnorm("I=-14.00:TP=-1.00:LRA=7.00:measured_I=-20.50:measured_LRA=3.00:"
                        "measured_TP=-8.20:measured_thresh=-31.00:offset=0.30");
        QTest::newRow("wide range keeps its own")
            << LoudnessMeasurement{-30.0, -12.0, 14.37, -42.0, 0.0} << -23.0 << K::Loudnorm
            << loudnorm("I=-23.00:TP=-1.00:LRA=14.37:measured_I=-30.00:measured_LRA=14.37:"
                        "measured_TP=-12.00:measured_thresh=-42.00:offset=0.00");
        QTest::newRow("steady tone: zero range moved off the default")
            << LoudnessMeasurement{-18.0, -17.9, 0.0, -28.0, 0.0} << -14.0 << K::Loudnorm
            << loudnorm("I=-14.00:TP=-1.00:LRA=7.00:measured_I=-18.00:measured_LRA=0.01:"
                        "measured_TP=-17.90:measured_thresh=-28.00:offset=0.00");
        QTest::newRow("loudness printing as zero moved off the default")
            << LoudnessMeasurement{-0.004, 0.5, 2.0, -10.0, 0.0} << -14.0 << K::Loudnorm
            << loudnorm("I=-14.00:TP=-1.00:LRA=7.00:measured_I=-0.01:measured_LRA=2.00:"
                        "measured_TP=0.50:measured_thresh=-10.00:offset=0.00");
        QTest::newRow("threshold on the default moved off it")
            << LoudnessMeasurement{-59.0, -40.0, 2.0, -70.001, 0.0} << -50.0 << K::Loudnorm
            << loudnorm("I=-50.00:TP=-1.00:LRA=7.00:measured_I=-59.00:measured_LRA=2.00:"
                        "measured_TP=-40.00:measured_thresh=-69.99:offset=0.00");
        // Written as -17.99 the peak would land 0.01 over the ceiling in loudnorm's own sum.
        QTest::newRow("limited: rounding over the ceiling lowers I")
            << LoudnessMeasurement{-19.996, -3.004, 7.1, -30.0, 0.3} << -14.0 << K::Loudnorm
            << loudnorm("I=-18.00:TP=-1.00:LRA=7.10:measured_I=-20.00:measured_LRA=7.10:"
                        "measured_TP=-3.00:measured_thresh=-30.00:offset=0.30");
        QTest::newRow("limited: still over after lowering")
            << LoudnessMeasurement{-20.006, -2.994, 7.1, -30.0, 0.3} << -14.0 << K::Volume
            << QStringLiteral("volume=1.99dB:precision=double");
        QTest::newRow("range beyond loudnorm's 50")
            << LoudnessMeasurement{-30.0, -10.0, 55.0, -45.0, 0.0} << -23.0 << K::Volume
            << QStringLiteral("volume=7.00dB:precision=double");
        QTest::newRow("clipped file above 0 LUFS")
            << LoudnessMeasurement{3.1, 3.5, 1.0, -7.0, -17.0} << -14.0 << K::Volume
            << QStringLiteral("volume=-17.10dB:precision=double");
        QTest::newRow("limited below loudnorm's -70")
            << LoudnessMeasurement{-69.8, 0.0, 3.0, -80.0, 0.0} << -14.0 << K::Volume
            << QStringLiteral("volume=-1.00dB:precision=double");
        QTest::newRow("silence") << LoudnessMeasurement{-inf, -inf, 0, -70, inf} << -14.0 << K::None
                                 << QString();
        QTest::newRow("shorter than a gating block")
            << LoudnessMeasurement{-inf, -12.0, 0, -70, inf} << -14.0 << K::None << QString();
    }

    void choose()
    {
        QFETCH(LoudnessMeasurement, measurement);
        QFETCH(double, target);
        QFETCH(GainFilter::Kind, kind);
        QFETCH(QString, text);

        const NormalizationPlan plan = NormalizationPlan::compute(measurement, target, -1.0);
        const GainFilter filter = GainFilter::choose(measurement, plan, -1.0);
        QCOMPARE(filter.text, text);
        QCOMPARE(filter.kind, kind);
    }
};

QTEST_GUILESS_MAIN(GainFilterTest)
#include "GainFilterTest.moc"

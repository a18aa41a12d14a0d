// SPDX-License-Identifier: GPL-3.0-or-later
//
// What ffmpeg is asked to do to the audio: one static gain per file under the
// true-peak ceiling, written as ffmpeg will read it, and the file's name and
// shape. The codecs themselves are read back from real outputs by the
// processing matrix.
#include "TestEnvironment.h"
#include "engine/GainFilter.h"
#include "engine/OutputEncoding.h"
#include "engine/OutputShape.h"

#include <QTest>

#include <limits>

Q_DECLARE_METATYPE(AudioStreamFacts)
Q_DECLARE_METATYPE(OutputEncoding)

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

QString loudnorm(const char *options)
{
    return QStringLiteral("loudnorm=") + QLatin1StringView(options) +
           QStringLiteral(":linear=true:print_format=summary");
}

} // namespace

class RenderOptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(TestEnvironment::commaLocaleActiveAsRequested()); }

    void plan_data()
    {
        QTest::addColumn<QList<double>>("in");  // loudness, peak, target, ceiling
        QTest::addColumn<QList<double>>("out"); // gain, loudness, peak, 1 when limited
        QTest::newRow("shortfall within 0.05 counts as reached")
            << QList{-14.03, -1.0, -14.0, -1.0} << QList{0.0, -14.03, -1.0, 0.0};
        QTest::newRow("shortfall just over 0.05")
            << QList{-14.06, -0.94, -14.0, -1.0} << QList{-0.06, -14.12, -1.0, 1.0};
        QTest::newRow("peak lands exactly on the ceiling")
            << QList{-20.0, -7.0, -14.0, -1.0} << QList{6.0, -14.0, -1.0, 0.0};
        QTest::newRow("turned down further for the ceiling")
            << QList{-10.0, 3.0, -12.0, -1.0} << QList{-4.0, -14.0, -1.0, 1.0};
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

    void extension_data()
    {
        QTest::addColumn<SourceAudioFormat>("source");
        QTest::addColumn<QString>("original");
        QTest::addColumn<OutputFormatMode>("mode");
        QTest::addColumn<QString>("extension");
        using S = SourceAudioFormat;
        using M = OutputFormatMode;
        QTest::newRow("kept WAV is lower-cased") << S::Wav << "WAV" << M::KeepOriginal << "wav";
        QTest::newRow("kept AIF keeps its spelling") << S::Aif << "AIF" << M::KeepOriginal << "AIF";
        QTest::newRow("a chosen format's own") << S::Aif << "AIF" << M::Caf << "caf";
    }

    void extension()
    {
        QFETCH(SourceAudioFormat, source);
        QFETCH(QString, original);
        QFETCH(OutputFormatMode, mode);
        QFETCH(QString, extension);
        const OutputEncoding encoding =
            OutputEncoding::resolve(source, mode, OutputBitDepth::Bit24, original);
        QCOMPARE(encoding.fileExtension, extension);
        // A WAV past 4 GiB needs RF64's header.
        QCOMPARE(encoding.codecArguments.contains(QStringLiteral("-rf64")), extension == u"wav");
    }

    // "Preserve original" as close as the encoder allows, and dither wherever
    // integer PCM keeps less than the signal has.
    void shapes_data()
    {
        QTest::addColumn<AudioStreamFacts>("source");
        QTest::addColumn<OutputEncoding>("encoding");
        QTest::addColumn<SampleRateMode>("rate");
        QTest::addColumn<bool>("gain");
        QTest::addColumn<QString>("expected"); // the arguments; what changed
        const auto as = [](OutputFormatMode mode, OutputBitDepth depth) {
            return OutputEncoding::resolve(SourceAudioFormat::M4a, mode, depth, u"m4a"_qs);
        };
        const OutputEncoding wav16 = as(OutputFormatMode::Wav, OutputBitDepth::Bit16);
        const OutputEncoding wav24 = as(OutputFormatMode::Wav, OutputBitDepth::Bit24);
        const OutputEncoding mp3 = as(OutputFormatMode::Mp3, OutputBitDepth::Bit24);
        const AudioStreamFacts cd{44100, 2, false, 16};
        const auto kept = SampleRateMode::PreserveOriginal;

        QTest::newRow("16-bit copied into 24-bit: exact, no dither")
            << cd << wav24 << kept << false << "-ar 44100";
        QTest::newRow("any gain into 24-bit: dithered")
            << cd << as(OutputFormatMode::Aiff, OutputBitDepth::Bit24) << kept << true
            << "-ar 44100 -dither_method triangular";
        QTest::newRow("resampled 16-bit into 16-bit: dithered")
            << cd << wav16 << SampleRateMode::Rate48000 << false
            << "-ar 48000 -dither_method triangular";
        QTest::newRow("decoded MP3 into 24-bit: dithered")
            << AudioStreamFacts{44100, 2, false, 0} << wav24 << kept << false
            << "-ar 44100 -dither_method triangular";
        QTest::newRow("176.4 kHz into MP3: 44.1 kHz, its own family")
            << AudioStreamFacts{176400, 1, false, 24} << mp3 << kept << true
            << "-ar 44100; rate 176400 to 44100";
        QTest::newRow("5.1 into MP3: downmixed to stereo")
            << AudioStreamFacts{48000, 6, false, 24} << mp3 << kept << true
            << "-ar 48000 -ac 2; channels 6 to 2";
        QTest::newRow("192 kHz 5.1 into AAC: 96 kHz, channels kept")
            << AudioStreamFacts{192000, 6, false, 24}
            << as(OutputFormatMode::KeepOriginal, OutputBitDepth::Bit24) << kept << true
            << "-ar 96000; rate 192000 to 96000";
    }

    void shapes()
    {
        QFETCH(AudioStreamFacts, source);
        QFETCH(OutputEncoding, encoding);
        QFETCH(SampleRateMode, rate);
        QFETCH(bool, gain);
        const OutputShape shape = OutputShape::decide(source, encoding, rate, gain);
        QStringList said{shape.arguments().join(u' ')};
        for (const OutputChange &change : shape.changes)
            said << QStringLiteral("%1 %2 to %3")
                        .arg(change.kind == OutputChange::Kind::Channels ? u"channels" : u"rate")
                        .arg(change.from)
                        .arg(change.to);
        QTEST(said.join(u"; "), "expected");
    }
};

QTEST_GUILESS_MAIN(RenderOptionsTest)
#include "RenderOptionsTest.moc"

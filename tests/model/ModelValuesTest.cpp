// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/AudioFileItem.h"
#include "model/LoudnessPreset.h"
#include "model/ProcessingSettings.h"

#include <QTest>

class ModelValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formatFromFileName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<std::optional<SourceAudioFormat>>("format");

        QTest::newRow("AIF is aif") << "Take.AIF" << std::optional(SourceAudioFormat::Aif);
        QTest::newRow("aiff is aiff, not aif")
            << "Take.aiff" << std::optional(SourceAudioFormat::Aiff);
        QTest::newRow("any case") << "Take.Wav" << std::optional(SourceAudioFormat::Wav);
        QTest::newRow("last dot decides")
            << "Take.mp3.m4a" << std::optional(SourceAudioFormat::M4a);
        QTest::newRow("flac") << "Take.flac" << std::optional<SourceAudioFormat>();
        QTest::newRow("no extension") << "Take" << std::optional<SourceAudioFormat>();
        QTest::newRow("only a dot") << "Take." << std::optional<SourceAudioFormat>();
    }

    void formatFromFileName()
    {
        QFETCH(QString, name);
        QFETCH(std::optional<SourceAudioFormat>, format);
        QCOMPARE(SourceAudioFormats::fromFileName(name), format);
    }

    void rawValuesAreExact()
    {
        QCOMPARE(SourceAudioFormats::fromRawValue(u"WAV"), std::nullopt);
        QCOMPARE(ProcessingOutcomes::fromRawValue(u"Peak limited"),
                 std::optional(ProcessingOutcome::PeakLimited));
        QCOMPARE(ProcessingOutcomes::fromRawValue(u"peak limited"), std::nullopt);
        QCOMPARE(OutputFormatModes::fromRawValue(u"keepOriginal"),
                 std::optional(OutputFormatMode::KeepOriginal));
        QCOMPARE(OutputFormatModes::fromRawValue(u"KeepOriginal"), std::nullopt);
        QCOMPARE(SampleRateModes::fromRawValue(u"rate44100"),
                 std::optional(SampleRateMode::Rate44100));
        QCOMPARE(OutputBitDepths::fromRawValue(24), std::optional(OutputBitDepth::Bit24));
        QCOMPARE(OutputBitDepths::fromRawValue(32), std::optional(OutputBitDepth::Float32));
        QCOMPARE(OutputBitDepths::fromRawValue(8), std::nullopt);
        QCOMPARE(AudioCategories::fromRawValue(u"sfx"), std::optional(AudioCategory::Sfx));
    }

    void defaultsNormaliseTheatreAmbience()
    {
        const ProcessingSettings settings;
        QVERIFY(settings.normalizeLoudness);
        QCOMPARE(settings.selectedPreset.id, QStringLiteral("theatre_ambience"));
        QCOMPARE(settings.effectiveTargetLUFS(), -32.0);
        QCOMPARE(settings.truePeakCeiling, -1.0);
        QCOMPARE(settings.sampleRateMode, SampleRateMode::PreserveOriginal);
        QCOMPARE(settings.bitDepth, OutputBitDepth::Bit24);
        QCOMPARE(settings.outputFormatMode, OutputFormatMode::KeepOriginal);
        QVERIFY(!settings.outputFolder);
        QVERIFY(!settings.addPrefix);
        QCOMPARE(settings.prefix, QStringLiteral("LUFS_"));
    }

    void effectiveTarget_data()
    {
        QTest::addColumn<LoudnessPreset>("preset");
        QTest::addColumn<double>("target");
        QTest::newRow("built-in") << *LoudnessPreset::builtIn(u"podcast") << -16.0;
        QTest::newRow("custom") << *LoudnessPreset::builtIn(u"custom") << -18.5;
        QTest::newRow("custom even with a target")
            << LoudnessPreset{QStringLiteral("x"), -9.0, true} << -18.5;
        QTest::newRow("no target, not custom")
            << LoudnessPreset{QStringLiteral("x"), std::nullopt, false} << -18.5;
    }

    void effectiveTarget()
    {
        QFETCH(LoudnessPreset, preset);
        QFETCH(double, target);
        ProcessingSettings settings;
        settings.selectedPreset = preset;
        settings.customTargetLUFS = -18.5;
        QCOMPARE(settings.effectiveTargetLUFS(), target);
    }

    void equalityCoversEveryField()
    {
        ProcessingSettings a;
        ProcessingSettings b;
        QCOMPARE(a, b);
        b.outputFolder = QStringLiteral("/out");
        QVERIFY(a != b);

        const ProcessingResult withLoudness{QStringLiteral("a.wav"),
                                            QStringLiteral("a.wav"),
                                            -20.0,
                                            {},
                                            {},
                                            {},
                                            ProcessingOutcome::Success,
                                            {}};
        ProcessingResult without = withLoudness;
        without.originalLUFS.reset();
        QVERIFY(withLoudness != without);

        QVERIFY(ProcessingStatus::failed(QStringLiteral("a")) !=
                ProcessingStatus::failed(QStringLiteral("b")));
        QCOMPARE(ProcessingStatus::done(), ProcessingStatus::done());

        const AudioFileItem first{QUuid::createUuid(),
                                  QStringLiteral("/a.wav"),
                                  QStringLiteral("a.wav"),
                                  SourceAudioFormat::Wav,
                                  AudioCategory::Other,
                                  {},
                                  {},
                                  OutputFormatMode::KeepOriginal,
                                  ProcessingStatus::ready(),
                                  {},
                                  {},
                                  {}};
        AudioFileItem second = first;
        QCOMPARE(first, second);
        second.id = QUuid::createUuid();
        QVERIFY(first != second);
    }
};

QTEST_GUILESS_MAIN(ModelValuesTest)
#include "ModelValuesTest.moc"

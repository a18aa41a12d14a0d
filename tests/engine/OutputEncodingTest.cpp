// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the written file is named and shaped as. The codecs themselves are read
// back from real outputs by the processing matrix.
#include "engine/OutputEncoding.h"

#include "engine/OutputShape.h"

#include <QTest>

Q_DECLARE_METATYPE(AudioStreamFacts)
Q_DECLARE_METATYPE(OutputEncoding)

class OutputEncodingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
        const AudioStreamFacts hiRes{96000, 2, false, 24};
        const auto kept = SampleRateMode::PreserveOriginal;

        QTest::newRow("16-bit copied into 24-bit: exact, no dither")
            << cd << wav24 << kept << false << "-ar 44100";
        QTest::newRow("24-bit into 16-bit: dithered")
            << hiRes << wav16 << kept << false << "-ar 96000 -dither_method triangular";
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
        QTest::newRow("a fixed rate the encoder takes is no change")
            << hiRes << mp3 << SampleRateMode::Rate44100 << true << "-ar 44100";
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

QTEST_GUILESS_MAIN(OutputEncodingTest)
#include "OutputEncodingTest.moc"

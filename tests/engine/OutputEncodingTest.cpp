// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputEncoding.h"

#include "engine/OutputShape.h"

#include <QTest>

Q_DECLARE_METATYPE(AudioStreamFacts)
Q_DECLARE_METATYPE(OutputChange)

class OutputEncodingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resolve_data()
    {
        QTest::addColumn<SourceAudioFormat>("source");
        QTest::addColumn<QString>("originalExtension");
        QTest::addColumn<OutputFormatMode>("mode");
        QTest::addColumn<OutputBitDepth>("depth");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QStringList>("codec");

        using S = SourceAudioFormat;
        using M = OutputFormatMode;
        using D = OutputBitDepth;
        const auto args = [](const char *text) { return QString::fromLatin1(text).split(u' '); };

        QTest::newRow("wav 16") << S::Mp3 << "mp3" << M::Wav << D::Bit16 << "wav"
                                << args("-c:a pcm_s16le -rf64 auto");
        QTest::newRow("wav 24") << S::M4a << "m4a" << M::Wav << D::Bit24 << "wav"
                                << args("-c:a pcm_s24le -rf64 auto");
        QTest::newRow("wav float") << S::Wav << "wav" << M::Wav << D::Float32 << "wav"
                                   << args("-c:a pcm_f32le -rf64 auto");
        QTest::newRow("aiff float")
            << S::Wav << "wav" << M::Aiff << D::Float32 << "aiff" << args("-c:a pcm_f32be");
        QTest::newRow("aiff 16") << S::Wav << "wav" << M::Aiff << D::Bit16 << "aiff"
                                 << args("-c:a pcm_s16be");
        QTest::newRow("caf is big-endian")
            << S::Wav << "wav" << M::Caf << D::Bit24 << "caf" << args("-c:a pcm_s24be");
        QTest::newRow("mp3 ignores bit depth")
            << S::Wav << "wav" << M::Mp3 << D::Bit24 << "mp3" << args("-c:a libmp3lame -q:a 2");
        QTest::newRow("kept WAV is lower-cased") << S::Wav << "WAV" << M::KeepOriginal << D::Bit16
                                                 << "wav" << args("-c:a pcm_s16le -rf64 auto");
        QTest::newRow("kept AIF keeps its spelling")
            << S::Aif << "AIF" << M::KeepOriginal << D::Bit24 << "AIF" << args("-c:a pcm_s24be");
        QTest::newRow("kept aiff")
            << S::Aiff << "aiff" << M::KeepOriginal << D::Bit16 << "aiff" << args("-c:a pcm_s16be");
        QTest::newRow("kept mp3") << S::Mp3 << "MP3" << M::KeepOriginal << D::Bit16 << "mp3"
                                  << args("-c:a libmp3lame -q:a 2");
        QTest::newRow("kept m4a is AAC 256k") << S::M4a << "m4a" << M::KeepOriginal << D::Bit24
                                              << "m4a" << args("-c:a aac -b:a 256k");
        QTest::newRow("kept caf") << S::Caf << "caf" << M::KeepOriginal << D::Bit16 << "caf"
                                  << args("-c:a pcm_s16be");
    }

    void resolve()
    {
        QFETCH(SourceAudioFormat, source);
        QFETCH(QString, originalExtension);
        QFETCH(OutputFormatMode, mode);
        QFETCH(OutputBitDepth, depth);
        QFETCH(QString, extension);
        QFETCH(QStringList, codec);

        const OutputEncoding encoding =
            OutputEncoding::resolve(source, mode, depth, originalExtension);
        QCOMPARE(encoding.fileExtension, extension);
        QCOMPARE(encoding.codecArguments, codec);
    }

    // "Preserve original" as close as the encoder allows, and dither wherever
    // integer PCM keeps less than the signal has.
    void shapes_data()
    {
        QTest::addColumn<AudioStreamFacts>("source");
        QTest::addColumn<OutputFormatMode>("mode");
        QTest::addColumn<OutputBitDepth>("depth");
        QTest::addColumn<SampleRateMode>("rate");
        QTest::addColumn<bool>("gain");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QList<OutputChange>>("changes");

        using M = OutputFormatMode;
        using D = OutputBitDepth;
        using R = SampleRateMode;
        using K = OutputChange::Kind;
        const auto args = [](const char *text) { return QString::fromLatin1(text).split(u' '); };
        const AudioStreamFacts cd{44100, 2, false, 16};
        const AudioStreamFacts hiRes{96000, 2, false, 24};
        const AudioStreamFacts surround{48000, 6, false, 24};
        const AudioStreamFacts floating{48000, 2, true, 32};
        const AudioStreamFacts mp3{44100, 2, false, 0};

        QTest::newRow("16-bit copied into 24-bit: exact, no dither")
            << cd << M::Wav << D::Bit24 << R::PreserveOriginal << false << args("-ar 44100")
            << QList<OutputChange>();
        QTest::newRow("24-bit into 16-bit: dithered")
            << hiRes << M::Wav << D::Bit16 << R::PreserveOriginal << false
            << args("-ar 96000 -dither_method triangular") << QList<OutputChange>();
        QTest::newRow("any gain into 24-bit: dithered")
            << cd << M::Aiff << D::Bit24 << R::PreserveOriginal << true
            << args("-ar 44100 -dither_method triangular") << QList<OutputChange>();
        QTest::newRow("resampled 16-bit into 16-bit: dithered")
            << cd << M::Wav << D::Bit16 << R::Rate48000 << false
            << args("-ar 48000 -dither_method triangular") << QList<OutputChange>();
        QTest::newRow("float output: no dither")
            << floating << M::Caf << D::Float32 << R::PreserveOriginal << true << args("-ar 48000")
            << QList<OutputChange>();
        QTest::newRow("decoded MP3 into 24-bit: dithered")
            << mp3 << M::Wav << D::Bit24 << R::PreserveOriginal << false
            << args("-ar 44100 -dither_method triangular") << QList<OutputChange>();
        QTest::newRow("96 kHz into MP3: 48 kHz")
            << hiRes << M::Mp3 << D::Bit24 << R::PreserveOriginal << true << args("-ar 48000")
            << QList<OutputChange>{{K::SampleRate, 96000, 48000}};
        QTest::newRow("176.4 kHz into MP3: 44.1 kHz")
            << AudioStreamFacts{176400, 2, false, 24} << M::Mp3 << D::Bit24 << R::PreserveOriginal
            << true << args("-ar 44100") << QList<OutputChange>{{K::SampleRate, 176400, 44100}};
        QTest::newRow("88.2 kHz into MP3: 44.1 kHz")
            << AudioStreamFacts{88200, 1, false, 24} << M::Mp3 << D::Bit24 << R::PreserveOriginal
            << true << args("-ar 44100") << QList<OutputChange>{{K::SampleRate, 88200, 44100}};
        QTest::newRow("5.1 into MP3: downmixed to stereo")
            << surround << M::Mp3 << D::Bit24 << R::PreserveOriginal << true
            << args("-ar 48000 -ac 2") << QList<OutputChange>{{K::Channels, 6, 2}};
        QTest::newRow("192 kHz 5.1 into AAC: 96 kHz, channels kept")
            << AudioStreamFacts{192000, 6, false, 24} << M::KeepOriginal << D::Bit24
            << R::PreserveOriginal << true << args("-ar 96000")
            << QList<OutputChange>{{K::SampleRate, 192000, 96000}};
        QTest::newRow("a fixed rate the encoder takes is no change")
            << hiRes << M::Mp3 << D::Bit24 << R::Rate44100 << true << args("-ar 44100")
            << QList<OutputChange>();
    }

    void shapes()
    {
        QFETCH(AudioStreamFacts, source);
        QFETCH(OutputFormatMode, mode);
        QFETCH(OutputBitDepth, depth);
        QFETCH(SampleRateMode, rate);
        QFETCH(bool, gain);
        QFETCH(QStringList, arguments);
        QFETCH(QList<OutputChange>, changes);
        // An M4A source kept as it is: the AAC row.
        const OutputEncoding encoding =
            OutputEncoding::resolve(SourceAudioFormat::M4a, mode, depth, QStringLiteral("m4a"));
        const OutputShape shape = OutputShape::decide(source, encoding, rate, gain);
        QCOMPARE(shape.arguments(), arguments);
        QCOMPARE(shape.changes, changes);
    }
};

QTEST_GUILESS_MAIN(OutputEncodingTest)
#include "OutputEncodingTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputEncoding.h"

#include <QTest>

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
                                << args("-c:a pcm_s16le");
        QTest::newRow("wav 24") << S::M4a << "m4a" << M::Wav << D::Bit24 << "wav"
                                << args("-c:a pcm_s24le");
        QTest::newRow("aiff 16") << S::Wav << "wav" << M::Aiff << D::Bit16 << "aiff"
                                 << args("-c:a pcm_s16be");
        QTest::newRow("caf is big-endian")
            << S::Wav << "wav" << M::Caf << D::Bit24 << "caf" << args("-c:a pcm_s24be");
        QTest::newRow("mp3 ignores bit depth")
            << S::Wav << "wav" << M::Mp3 << D::Bit24 << "mp3" << args("-c:a libmp3lame -q:a 2");
        QTest::newRow("kept WAV is lower-cased")
            << S::Wav << "WAV" << M::KeepOriginal << D::Bit16 << "wav" << args("-c:a pcm_s16le");
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

        QCOMPARE(OutputEncoding::resolve(source, mode, depth, originalExtension),
                 (OutputEncoding{extension, codec}));
    }
};

QTEST_GUILESS_MAIN(OutputEncodingTest)
#include "OutputEncodingTest.moc"

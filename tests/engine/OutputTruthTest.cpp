// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every output at its promised loudness and under its ceiling, whatever the
// format, rate or channels, and reported as it is: each written file is read
// back by an independent meter (libebur128), never by loudnorm.
#include "IndependentMeter.h"
#include "MediaProbe.h"
#include "TestAudio.h"
#include "TestEnvironment.h"
#include "engine/CancellationToken.h"
#include "engine/FFmpegRunner.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "model/AudioFileItem.h"
#include "model/LoudnessPreset.h"
#include "model/StandardPath.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <map>

using Segment = TestAudio::Segment;

namespace {

constexpr double target = -23;
constexpr double ceiling = -1;

} // namespace

class OutputTruthTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<FFmpegRunner> m_runner =
        std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath());
    LoudnessProcessingService m_service{m_runner,
                                        std::make_shared<LoudnessAnalysisService>(m_runner)};

    // Noise, then a tone that sits above 22 kHz where the rate allows, so
    // that a lower output rate loses real energy. The two are within a few LU
    // of each other, as programme material is: blocks that straddle the
    // relative gate would make any lossy encoder's loudness jump with level.
    QString source(int rate, int channels, const QString &extension)
    {
        const QString stem = m_dir.filePath(QStringLiteral("src/%1-%2").arg(rate).arg(channels));
        const QString wav = stem + QStringLiteral(".wav");
        if (!QFileInfo::exists(wav)) {
            QDir().mkpath(QFileInfo(wav).path());
            if (!TestAudio::writeWav(
                    wav, rate, channels,
                    {Segment::noise(-20, 3), Segment::sine(-17, 2, rate > 60000 ? 30000 : 3000)}))
                return {};
        }
        if (extension == u"wav")
            return wav;
        const QString encoded = stem + u'.' + extension;
        if (!QFileInfo::exists(encoded) &&
            !TestAudio::encode(TestEnvironment::ffmpegPath(), wav, encoded).isEmpty())
            return {};
        return encoded;
    }

private Q_SLOTS:
    void outputs_data()
    {
        QTest::addColumn<QString>("sourceExtension");
        QTest::addColumn<OutputFormatMode>("mode");
        QTest::addColumn<int>("rate");
        QTest::addColumn<int>("channels");
        QTest::addColumn<bool>("normalize");

        const QList<std::pair<const char *, OutputFormatMode>> formats{
            {"wav", OutputFormatMode::Wav},
            {"aiff", OutputFormatMode::Aiff},
            {"caf", OutputFormatMode::Caf},
            {"mp3", OutputFormatMode::Mp3},
            {"m4a", OutputFormatMode::KeepOriginal}};
        for (const bool normalize : {true, false})
            for (const auto &[name, mode] : formats)
                for (const int rate : {44100, 48000, 96000})
                    for (const int channels : {1, 2, 6}) {
                        const QString extension = QLatin1StringView(name) == u"m4a"
                                                      ? QStringLiteral("m4a")
                                                      : QStringLiteral("wav");
                        QTest::addRow("%s %d Hz %d ch %s", name, rate, channels,
                                      normalize ? "normalised" : "converted")
                            << extension << mode << rate << channels << normalize;
                    }
    }

    void outputs()
    {
        QFETCH(QString, sourceExtension);
        QFETCH(OutputFormatMode, mode);
        QFETCH(int, rate);
        QFETCH(int, channels);
        QFETCH(bool, normalize);

        const QString path = source(rate, channels, sourceExtension);
        QVERIFY(!path.isEmpty());
        const auto format = *SourceAudioFormats::fromFileName(path);
        const OutputEncoding encoding =
            OutputEncoding::resolve(format, mode, OutputBitDepth::Bit24, sourceExtension);
        ProcessingSettings settings;
        settings.selectedPreset = *LoudnessPreset::builtIn(u"voice_dialogue"); // -23 LUFS
        settings.truePeakCeiling = ceiling;
        settings.normalizeLoudness = normalize;
        AudioFileItem item;
        item.id = QUuid::createUuid();
        item.sourcePath = path;
        item.relativePath = fileNameOf(path);
        item.sourceFormat = format;
        const QString destination =
            m_dir
                .filePath(QStringLiteral("out/%1.%2")
                              .arg(QLatin1StringView(QTest::currentDataTag()))
                              .arg(encoding.fileExtension))
                .replace(u' ', u'_');
        QDir().mkpath(QFileInfo(destination).path());

        const ProcessingResult result =
            m_service.process(item, destination, encoding, settings, CancellationToken());
        const auto out = IndependentMeter::read(destination, TestEnvironment::ffmpegPath());
        QVERIFY(out);
        const auto in = IndependentMeter::read(path, TestEnvironment::ffmpegPath());
        QVERIFY(in);
        const QString figures = QStringLiteral("meter %1 LUFS %2 dBTP, reported %3 LUFS %4 dBTP")
                                    .arg(out->integratedLUFS, 0, 'f', 2)
                                    .arg(out->truePeakDBTP, 0, 'f', 2)
                                    .arg(result.finalLUFS.value_or(qQNaN()), 0, 'f', 2)
                                    .arg(result.truePeak.value_or(qQNaN()), 0, 'f', 2);

        // What the encoder can take, as far as the source allows.
        const bool mp3 = encoding.family == OutputEncoding::Family::Mp3;
        QCOMPARE(out->channels, mp3 ? std::min(channels, 2) : channels);
        QCOMPARE(out->sampleRate, mp3 && rate > 48000 ? 48000 : rate);
        QCOMPARE(result.changes.isEmpty(), out->channels == channels && out->sampleRate == rate);

        if (normalize) {
            QVERIFY2(out->truePeakDBTP <= ceiling + 0.05, qPrintable(figures));
            if (result.outcome == ProcessingOutcome::Success)
                QVERIFY2(std::abs(out->integratedLUFS - target) <= 0.2, qPrintable(figures));
            else
                QVERIFY2(out->integratedLUFS < target, qPrintable(figures));
            QVERIFY2(std::abs(*result.finalLUFS - out->integratedLUFS) <= 0.1, qPrintable(figures));
            QVERIFY2(std::abs(*result.truePeak - out->truePeakDBTP) <= 0.1 + (mp3 ? 0.3 : 0),
                     qPrintable(figures));
        } else if (result.changes.isEmpty() && !encoding.isLossy()) {
            // PCM converted as it was (dither and all): the loudness is the source's.
            QVERIFY2(std::abs(out->integratedLUFS - in->integratedLUFS) <= 0.2,
                     qPrintable(figures));
        }
    }

    // A float source with peaks above full scale, converted without
    // normalising: integer PCM clips and says so; 32-bit float keeps them.
    void peaksAboveFullScale_data()
    {
        QTest::addColumn<OutputBitDepth>("depth");
        QTest::newRow("24-bit") << OutputBitDepth::Bit24;
        QTest::newRow("32-bit float") << OutputBitDepth::Float32;
    }

    void peaksAboveFullScale()
    {
        QFETCH(OutputBitDepth, depth);
        const QString path = m_dir.filePath(QStringLiteral("hot.wav"));
        QVERIFY(TestAudio::writeWav(path, 48000, 2, {Segment::sine(4, 2, 440)}));
        ProcessingSettings settings;
        settings.normalizeLoudness = false;
        settings.bitDepth = depth;
        AudioFileItem item;
        item.sourcePath = path;
        item.sourceFormat = SourceAudioFormat::Wav;
        const QString destination =
            m_dir.filePath(QStringLiteral("hot/%1.wav").arg(OutputBitDepths::rawValue(depth)));
        const ProcessingResult result =
            m_service.process(item, destination,
                              OutputEncoding::resolve(SourceAudioFormat::Wav, OutputFormatMode::Wav,
                                                      depth, QStringLiteral("wav")),
                              settings, CancellationToken());
        const auto out = IndependentMeter::read(destination, TestEnvironment::ffmpegPath());
        QVERIFY(out);
        if (depth == OutputBitDepth::Float32) {
            QCOMPARE(result.outcome, ProcessingOutcome::Success);
            QVERIFY2(out->truePeakDBTP > 3.5, qPrintable(QString::number(out->truePeakDBTP)));
        } else {
            QCOMPARE(result.outcome, ProcessingOutcome::Clipped);
            QVERIFY(result.warningMessage &&
                    result.warningMessage->contains(QStringLiteral("+4.")));
            QVERIFY2(out->truePeakDBTP < 1, qPrintable(QString::number(out->truePeakDBTP)));
        }
    }

    // While a file is written, ffmpeg's own report says how far it has come:
    // steadily forward, to the end.
    void progressWhileWriting()
    {
        const QString path = m_dir.filePath(QStringLiteral("long take.wav"));
        QVERIFY(TestAudio::writeWav(path, 48000, 2, {Segment::noise(-24, 40)}));
        ProcessingSettings settings;
        settings.normalizeLoudness = true;
        settings.selectedPreset = *LoudnessPreset::builtIn(u"streaming");
        AudioFileItem item;
        item.sourcePath = path;
        item.sourceFormat = SourceAudioFormat::Wav;
        QList<double> heard;
        m_service.processReporting(
            item, m_dir.filePath(QStringLiteral("progress/long take.mp3")),
            OutputEncoding::resolve(SourceAudioFormat::Wav, OutputFormatMode::Mp3,
                                    OutputBitDepth::Bit24, QStringLiteral("mp3")),
            settings, CancellationToken(), [&heard](double fraction) { heard.append(fraction); });
        QVERIFY2(heard.size() >= 2, qPrintable(QString::number(heard.size())));
        QVERIFY(std::is_sorted(heard.cbegin(), heard.cend()));
        QVERIFY(heard.first() >= 0);
        QVERIFY2(heard.last() > 0.95 && heard.last() <= 1.0,
                 qPrintable(QString::number(heard.last())));
    }

    // A 24-bit tone at -96 dBFS into 16 bits: dithered, its error is noise
    // around the tone, not the 0/-1 staircase of dropping the low byte.
    void ditherAtLowLevel()
    {
        const QString floating = m_dir.filePath(QStringLiteral("faint float.wav"));
        const QString path = m_dir.filePath(QStringLiteral("faint.wav"));
        QVERIFY(TestAudio::writeWav(floating, 48000, 1, {Segment::sine(-96, 2, 1000)}));
        QCOMPARE(QProcess::execute(TestEnvironment::ffmpegPath(),
                                   {QStringLiteral("-v"), QStringLiteral("error"),
                                    QStringLiteral("-i"), floating, QStringLiteral("-c:a"),
                                    QStringLiteral("pcm_s24le"), path}),
                 0);
        ProcessingSettings settings;
        settings.normalizeLoudness = false;
        settings.bitDepth = OutputBitDepth::Bit16;
        AudioFileItem item;
        item.sourcePath = path;
        item.sourceFormat = SourceAudioFormat::Wav;
        const QString destination = m_dir.filePath(QStringLiteral("faint/16.wav"));
        m_service.process(item, destination,
                          OutputEncoding::resolve(SourceAudioFormat::Wav, OutputFormatMode::Wav,
                                                  OutputBitDepth::Bit16, QStringLiteral("wav")),
                          settings, CancellationToken());
        QFile file(destination);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray wav = file.readAll();
        const qsizetype data = wav.indexOf("data");
        QVERIFY(data > 0);
        std::map<int, int> counts;
        for (qsizetype i = data + 8; i + 1 < wav.size(); i += 2)
            ++counts[static_cast<qint16>(static_cast<quint8>(wav[i]) |
                                         (static_cast<quint8>(wav[i + 1]) << 8))];
        QVERIFY2(counts.size() >= 3, qPrintable(QString::number(counts.size())));
        // Symmetric around zero: as many +1 as -1 (within 10 %).
        QVERIFY2(std::abs(counts[1] - counts[-1]) < 0.1 * std::max(counts[1], counts[-1]),
                 qPrintable(QStringLiteral("%1 %2").arg(counts[1]).arg(counts[-1])));
    }
};

QTEST_GUILESS_MAIN(OutputTruthTest)
#include "OutputTruthTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// What professional files carry beyond the audio survives processing: the
// broadcast extension (timecode), iXML, markers and loops in WAV, at the same
// times when the rate changes; tags in AIFF and MP3; ALAC stays ALAC; audio
// that nothing changes is copied. Sources are built here, with ffmpeg's own
// bext writer and chunks appended by hand; outputs are read back by a RIFF
// walk of the test's own.
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
#include <QtEndian>

#include <cmath>
#include <cstring>

using Segment = TestAudio::Segment;

namespace {

using Chunks = QMultiMap<QByteArray, QByteArray>;

QByteArray chunk(const QByteArray &id, const QByteArray &body)
{
    QByteArray bytes = id + QByteArray(4, '\0') + body;
    qToLittleEndian(quint32(body.size()), bytes.data() + 4);
    return body.size() & 1 ? bytes + '\0' : bytes;
}

QByteArray u32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

quint32 u32At(const QByteArray &bytes, qsizetype at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Every chunk of a RIFF/RF64 WAVE by id, the audio included.
Chunks chunksOf(const QString &path)
{
    const QByteArray wav = readAll(path);
    Chunks chunks;
    for (qsizetype at = 12; at + 8 <= wav.size();) {
        const quint32 size = u32At(wav, at + 4);
        chunks.insert(wav.mid(at, 4), wav.mid(at + 8, size));
        at += 8 + size + (size & 1);
    }
    return chunks;
}

// Markers at 1.0 s and 2.5 s (a labelled region of 0.5 s), a loop from 2 s to 3 s.
QByteArray cueChunk(int rate)
{
    QByteArray body = u32(2);
    for (const auto &[id, seconds] : {std::pair(1u, 1.0), std::pair(2u, 2.5)}) {
        const quint32 at = quint32(seconds * rate);
        body += u32(id) + u32(at) + QByteArray("data") + u32(0) + u32(0) + u32(at);
    }
    return chunk("cue ", body);
}

QByteArray adtlChunk(int rate)
{
    return chunk("LIST", QByteArray("adtl") + chunk("labl", u32(1) + QByteArray("Thunder", 8)) +
                             chunk("ltxt", u32(2) + u32(quint32(rate / 2)) + QByteArray("rgn ") +
                                               QByteArray(8, '\0')));
}

QByteArray smplChunk(int rate)
{
    return chunk("smpl", u32(0) + u32(0) + u32(quint32(std::llround(1e9 / rate))) + u32(60) +
                             u32(0) + u32(0) + u32(0) + u32(1) + u32(0) + u32(1) + u32(0) +
                             u32(quint32(2 * rate)) + u32(quint32(3 * rate)) + u32(0) + u32(0));
}

const QByteArray ixml = "<?xml version=\"1.0\"?><BWFXML><SCENE>4</SCENE><TAKE>2</TAKE></BWFXML>";

// One second at the rate, as the cue chunk counts it.
quint32 cuePosition(const QByteArray &cue, int point)
{
    return u32At(cue, 4 + point * 24 + 4);
}

// Marker positions and names of a written AIFF (MARK) or CAF (mark and strg).
QList<std::pair<quint64, QByteArray>> markersOf(const QString &path)
{
    const QByteArray file = readAll(path);
    QList<std::pair<quint64, QByteArray>> markers;
    const bool caf = file.startsWith("caff");
    QByteArray strings;
    for (qsizetype at = caf ? 8 : 12; at + (caf ? 12 : 8) <= file.size();) {
        const QByteArray id = file.mid(at, 4);
        const qint64 size = caf ? qFromBigEndian<qint64>(file.constData() + at + 4)
                                : qFromBigEndian<quint32>(file.constData() + at + 4);
        const QByteArray body = file.mid(at + (caf ? 12 : 8), size);
        if (id == "MARK") {
            for (qsizetype m = 2; m + 7 <= body.size();) {
                const int length = quint8(body[m + 6]);
                markers.append(
                    {qFromBigEndian<quint32>(body.constData() + m + 2), body.mid(m + 7, length)});
                m += 7 + length + ((1 + length) & 1);
            }
        } else if (id == "mark") {
            for (qsizetype m = 8; m + 28 <= body.size(); m += 28) {
                double frame = 0;
                const quint64 bits = qFromBigEndian<quint64>(body.constData() + m + 4);
                std::memcpy(&frame, &bits, sizeof frame);
                markers.append(std::pair(quint64(frame), QByteArray()));
            }
        } else if (id == "strg") {
            strings = body.mid(4 + 12 * qFromBigEndian<quint32>(body.constData()));
        }
        if (size < 0)
            break;
        at += (caf ? 12 : 8) + size + (caf ? 0 : size & 1);
    }
    // CAF keeps the names in its string table, in marker order.
    const QList<QByteArray> names = strings.split('\0');
    for (qsizetype i = 0; caf && i < markers.size() && i < names.size(); ++i)
        markers[i].second = names[i];
    return markers;
}

QString ffmpegSays(const QString &path)
{
    QProcess ffmpeg;
    ffmpeg.start(TestEnvironment::ffmpegPath(),
                 {QStringLiteral("-hide_banner"), QStringLiteral("-i"), path});
    ffmpeg.waitForFinished(30000);
    return QString::fromUtf8(ffmpeg.readAllStandardError());
}

bool runFFmpeg(const QStringList &arguments)
{
    return QProcess::execute(
               TestEnvironment::ffmpegPath(),
               QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y")} +
                   arguments) == 0;
}

} // namespace

class MetadataKeepingTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<FFmpegRunner> m_runner =
        std::make_shared<FFmpegRunner>(TestEnvironment::ffmpegPath());
    LoudnessProcessingService m_service{m_runner,
                                        std::make_shared<LoudnessAnalysisService>(m_runner)};
    QString m_tone;

    // A broadcast WAV at 48 kHz: bext by ffmpeg, then iXML, markers and loops.
    QString makeBroadcastWav(bool damaged = false)
    {
        const QString path =
            m_dir.filePath(damaged ? QStringLiteral("bwf-damaged.wav") : QStringLiteral("bwf.wav"));
        if (!runFFmpeg({QStringLiteral("-i"),
                        m_tone,
                        QStringLiteral("-c:a"),
                        QStringLiteral("pcm_s24le"),
                        QStringLiteral("-write_bext"),
                        QStringLiteral("1"),
                        QStringLiteral("-metadata"),
                        QStringLiteral("description=Scene 4 take 2"),
                        QStringLiteral("-metadata"),
                        QStringLiteral("originator=Field recorder"),
                        QStringLiteral("-metadata"),
                        QStringLiteral("originator_reference=REF-42"),
                        QStringLiteral("-metadata"),
                        QStringLiteral("origination_date=2026-11-22"),
                        QStringLiteral("-metadata"),
                        QStringLiteral("origination_time=10:11:12"),
                        QStringLiteral("-metadata"),
                        QStringLiteral("time_reference=172800000"),
                        QStringLiteral("-metadata"),
                        QStringLiteral("coding_history=A=PCM,F=48000,W=24,M=stereo,T=recorder"),
                        path}))
            return {};
        QByteArray wav = readAll(path);
        wav += chunk("iXML", ixml) + cueChunk(48000) + adtlChunk(48000) + smplChunk(48000);
        if (damaged)
            wav += QByteArray("JUNK") + u32(0x7fffffff); // a size past the end
        qToLittleEndian(quint32(wav.size() - 8), wav.data() + 4);
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(wav) == wav.size() ? path : QString();
    }

    ProcessingResult process(const QString &source, OutputFormatMode mode, SampleRateMode rate,
                             bool normalize, const QString &destination)
    {
        ProcessingSettings settings;
        settings.selectedPreset = *LoudnessPreset::builtIn(u"voice_dialogue");
        settings.sampleRateMode = rate;
        settings.normalizeLoudness = normalize;
        AudioFileItem item;
        item.sourcePath = source;
        item.sourceFormat = *SourceAudioFormats::fromFileName(source);
        const OutputEncoding encoding = OutputEncoding::resolve(
            item.sourceFormat, mode, OutputBitDepth::Bit24, QFileInfo(source).suffix());
        QDir().mkpath(QFileInfo(destination).path());
        return m_service.process(item, destination + u'.' + encoding.fileExtension, encoding,
                                 settings, CancellationToken());
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_tone = m_dir.filePath(QStringLiteral("tone.wav"));
        QVERIFY(TestAudio::writeWav(m_tone, 48000, 2,
                                    {Segment::noise(-20, 2), Segment::sine(-17, 2, 1000)}));
    }

    void broadcastWav_data()
    {
        QTest::addColumn<OutputFormatMode>("mode");
        QTest::addColumn<SampleRateMode>("rate");
        QTest::addColumn<int>("outputRate");
        QTest::newRow("normalised as WAV at 48 kHz")
            << OutputFormatMode::KeepOriginal << SampleRateMode::PreserveOriginal << 48000;
        QTest::newRow("normalised as WAV at 44.1 kHz")
            << OutputFormatMode::Wav << SampleRateMode::Rate44100 << 44100;
        QTest::newRow("normalised as MP3")
            << OutputFormatMode::Mp3 << SampleRateMode::Rate48000 << 0;
        // Negative: markers only, in AIFF or CAF at that rate.
        QTest::newRow("normalised as AIFF at 44.1 kHz")
            << OutputFormatMode::Aiff << SampleRateMode::Rate44100 << -44100;
        QTest::newRow("normalised as CAF at 44.1 kHz")
            << OutputFormatMode::Caf << SampleRateMode::Rate44100 << -44100;
    }

    void broadcastWav()
    {
        QFETCH(OutputFormatMode, mode);
        QFETCH(SampleRateMode, rate);
        QFETCH(int, outputRate); // negative: markers only, in AIFF or CAF at that rate
        const QString source = makeBroadcastWav();
        QVERIFY(!source.isEmpty());
        const QString out = m_dir.filePath(QStringLiteral("bwf/") +
                                           QLatin1StringView(QTest::currentDataTag()).toString());
        const ProcessingResult result = process(source, mode, rate, true, out);
        if (outputRate == 0) {
            QCOMPARE(result.notKept,
                     QStringList({QStringLiteral("bext"), QStringLiteral("iXML"),
                                  QStringLiteral("markers"), QStringLiteral("loops")}));
            return;
        }
        if (outputRate < 0) {
            QCOMPARE(result.notKept, QStringList({QStringLiteral("bext"), QStringLiteral("iXML"),
                                                  QStringLiteral("loops")}));
            const QString written = out + (mode == OutputFormatMode::Aiff ? QStringLiteral(".aiff")
                                                                          : QStringLiteral(".caf"));
            const QList<std::pair<quint64, QByteArray>> expected{
                {quint64(-outputRate), QByteArray("Thunder")},
                {quint64(-2.5 * outputRate), QByteArray()}};
            QCOMPARE(markersOf(written), expected);
            return;
        }
        QVERIFY(result.notKept.isEmpty());
        const Chunks in = chunksOf(source);
        const Chunks written = chunksOf(out + QStringLiteral(".wav"));
        const double ratio = outputRate / 48000.0;

        // Timecode and the bext fields; one line more of coding history.
        const QByteArray bext = written.value("bext");
        QVERIFY(bext.size() >= 602);
        QCOMPARE(bext.left(338), in.value("bext").left(338));
        QCOMPARE(qFromLittleEndian<quint64>(bext.constData() + 338),
                 quint64(std::llround(172800000 * ratio)));
        const QByteArray history = bext.mid(602);
        const QByteArray expected =
            "A=PCM,F=48000,W=24,M=stereo,T=recorder\r\nA=PCM,F=" + QByteArray::number(outputRate) +
            QByteArray(",W=24,M=stereo,T=Tonbrook ");
        QVERIFY2(history.startsWith(expected), history.constData());
        QVERIFY2(history.contains("; -23.0 LUFS\r\n"), history.constData());

        // iXML as it was; markers, the region and the loop at the same times.
        QCOMPARE(written.value("iXML"), ixml);
        QCOMPARE(written.value("cue "), cueChunk(outputRate).mid(8));
        QCOMPARE(written.values("LIST").contains(adtlChunk(outputRate).mid(8)), true);
        QCOMPARE(written.value("smpl"), smplChunk(outputRate).mid(8));
        QCOMPARE(cuePosition(written.value("cue "), 1), quint32(2.5 * outputRate));
    }

    // What other sources carry, and the fail-safe on a damaged chunk list.
    void otherSources_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("broadcast WAV with a damaged chunk list") << QStringLiteral("damaged");
        QTest::newRow("AIFF with artist and album (ID3)") << QStringLiteral("aiff");
        QTest::newRow("MP3 with ReplayGain, normalised") << QStringLiteral("replaygain");
        QTest::newRow("ALAC kept as it is") << QStringLiteral("alac");
        QTest::newRow("MP3 to MP3, converted: copied") << QStringLiteral("copy");
    }

    void otherSources()
    {
        QFETCH(QString, kind);
        const QString out = m_dir.filePath(QStringLiteral("other/") + kind);
        const auto tagged = [this](const QString &name, const QStringList &encoding) {
            const QString path = m_dir.filePath(name);
            return runFFmpeg(
                       QStringList{QStringLiteral("-i"), m_tone} + encoding +
                       QStringList{QStringLiteral("-metadata"), QStringLiteral("artist=The Band"),
                                   QStringLiteral("-metadata"), QStringLiteral("album=Live"), path})
                       ? path
                       : QString();
        };

        if (kind == u"damaged") {
            const QString source = makeBroadcastWav(true);
            const ProcessingResult result = process(source, OutputFormatMode::KeepOriginal,
                                                    SampleRateMode::PreserveOriginal, true, out);
            QCOMPARE(result.notKept, QStringList{QStringLiteral("damaged")});
            QVERIFY(!chunksOf(out + QStringLiteral(".wav")).contains("iXML"));
        } else if (kind == u"aiff") {
            const QString source = tagged(QStringLiteral("tagged.aiff"),
                                          {QStringLiteral("-write_id3v2"), QStringLiteral("1")});
            process(source, OutputFormatMode::KeepOriginal, SampleRateMode::PreserveOriginal, true,
                    out);
            const QString said = ffmpegSays(out + QStringLiteral(".aiff"));
            QVERIFY2(said.contains(QStringLiteral("The Band")) &&
                         said.contains(QStringLiteral("Live")),
                     qPrintable(said));
        } else if (kind == u"replaygain") {
            const QString source = tagged(
                QStringLiteral("replaygain.mp3"),
                {QStringLiteral("-metadata"), QStringLiteral("REPLAYGAIN_TRACK_GAIN=-6.50 dB"),
                 QStringLiteral("-metadata"), QStringLiteral("REPLAYGAIN_ALBUM_GAIN=-7.10 dB")});
            QVERIFY(ffmpegSays(source).contains(QStringLiteral("REPLAYGAIN_TRACK_GAIN")));
            process(source, OutputFormatMode::KeepOriginal, SampleRateMode::PreserveOriginal, true,
                    out);
            const QString said = ffmpegSays(out + QStringLiteral(".mp3"));
            QVERIFY2(!said.contains(QStringLiteral("REPLAYGAIN_")), qPrintable(said));
            // Nor the LAME header's own ReplayGain fields, which ffmpeg reports as side data.
            QVERIFY2(!said.contains(QStringLiteral("replaygain: ")), qPrintable(said));
            QVERIFY2(said.contains(QStringLiteral("The Band")), qPrintable(said));
        } else if (kind == u"alac") {
            const QString source = tagged(QStringLiteral("lossless.m4a"),
                                          {QStringLiteral("-c:a"), QStringLiteral("alac"),
                                           QStringLiteral("-sample_fmt"), QStringLiteral("s16p")});
            process(source, OutputFormatMode::KeepOriginal, SampleRateMode::PreserveOriginal, true,
                    out);
            const QString said = ffmpegSays(out + QStringLiteral(".m4a"));
            QVERIFY2(said.contains(QStringLiteral("Audio: alac")) &&
                         said.contains(QStringLiteral("s16p")),
                     qPrintable(said));
        } else if (kind == u"copy") {
            const QString source =
                tagged(QStringLiteral("plain.mp3"), {QStringLiteral("-q:a"), QStringLiteral("5")});
            process(source, OutputFormatMode::KeepOriginal, SampleRateMode::PreserveOriginal, false,
                    out);
            // Encoded again, the frames would differ; copied, they are the source's.
            const QByteArray before = readAll(source);
            const QByteArray after = readAll(out + QStringLiteral(".mp3"));
            const QByteArray frames = before.right(before.size() / 2);
            QVERIFY(after.contains(frames));
        }
    }
};

QTEST_GUILESS_MAIN(MetadataKeepingTest)
#include "MetadataKeepingTest.moc"

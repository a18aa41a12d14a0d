// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestAudio.h"

#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

using namespace Qt::StringLiterals;

namespace {

// Gaussian noise through a 4th-order Butterworth low-pass at 12 kHz (or 0.4 x
// the rate), scaled to the RMS. Real material carries little above 20 kHz;
// white noise at 96 kHz would put half its weighted energy there, which a
// resample to 44.1 kHz removes.
std::vector<double> bandLimitedNoise(qint64 frames, int rate, double rms, std::mt19937 &random)
{
    std::normal_distribution<double> gaussian(0.0, 1.0);
    const double k = std::tan(std::numbers::pi * std::min(12000.0, 0.4 * rate) / rate);
    const double norm = 1 + std::numbers::sqrt2 * k + k * k;
    const double b0 = k * k / norm;
    const double a1 = 2 * (k * k - 1) / norm;
    const double a2 = (1 - std::numbers::sqrt2 * k + k * k) / norm;
    std::vector<double> out(static_cast<size_t>(frames));
    double x[2][2] = {}, y[2][2] = {}, energy = 0;
    for (double &sample : out) {
        sample = gaussian(random);
        for (int stage = 0; stage < 2; ++stage) {
            const double in = std::exchange(sample, b0 * (sample + 2 * x[stage][0] + x[stage][1]) -
                                                        a1 * y[stage][0] - a2 * y[stage][1]);
            x[stage][1] = std::exchange(x[stage][0], in);
            y[stage][1] = std::exchange(y[stage][0], sample);
        }
        energy += sample * sample;
    }
    for (double &sample : out)
        sample = std::clamp(sample * rms / std::sqrt(energy / frames), -1.0, 1.0);
    return out;
}

// ffmpeg's complaint, or empty when it did its work.
QString runFFmpeg(const QString &ffmpegPath, const QStringList &arguments)
{
    QProcess ffmpeg;
    ffmpeg.start(ffmpegPath, QStringList{u"-y"_s, u"-v"_s, u"error"_s} + arguments);
    return ffmpeg.waitForFinished(120000) && ffmpeg.exitStatus() == QProcess::NormalExit &&
                   ffmpeg.exitCode() == 0
               ? QString()
               : u"ffmpeg failed: "_s + QString::fromUtf8(ffmpeg.readAllStandardError());
}

QStringList codecFor(const QString &extension)
{
    if (extension == u"mp3")
        return {u"-c:a"_s, u"libmp3lame"_s, u"-q:a"_s, u"2"_s};
    if (extension == u"m4a")
        return {u"-c:a"_s, u"aac"_s, u"-b:a"_s, u"256k"_s};
    return {u"-c:a"_s, extension == u"wav" ? u"pcm_s16le"_s : u"pcm_s24be"_s};
}

// An ID3v2.3 tag with one APIC frame: a 1 x 1 PNG as the front cover (Latin-1
// text, the MIME type, picture type 3, no description). Its size is
// "synchsafe", seven bits to a byte.
QByteArray id3WithCover()
{
    const QByteArray body =
        QByteArray("\0image/png\0\3\0", 13) +
        QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDw"
                               "AChwGA60e6kgAAAABJRU5ErkJggg==");
    QByteArray frame = "APIC" + QByteArray(6, '\0') + body;
    qToBigEndian(quint32(body.size()), frame.data() + 4);
    const auto n = quint32(frame.size());
    return QByteArray("ID3\3\0\0", 6) + char(n >> 21 & 0x7f) + char(n >> 14 & 0x7f) +
           char(n >> 7 & 0x7f) + char(n & 0x7f) + frame;
}

} // namespace

bool TestAudio::writeWav(const QString &path, int sampleRate, int channels,
                         const std::vector<Segment> &segments)
{
    std::vector<float> samples;
    std::mt19937 random(12345);
    double phase = 0;
    for (const Segment &segment : segments) {
        const qint64 frames = std::llround(segment.seconds * sampleRate);
        const double amplitude = std::pow(10.0, segment.levelDBFS / 20);
        const std::vector<double> noise =
            segment.kind == Segment::Kind::Noise
                ? bandLimitedNoise(frames, sampleRate, amplitude, random)
                : std::vector<double>();
        const double fade = segment.phaseDegrees >= 0 ? 0.01 * sampleRate : 0;
        if (segment.phaseDegrees >= 0)
            phase = segment.phaseDegrees * std::numbers::pi / 180;
        for (qint64 i = 0; i < frames; ++i) {
            double value = segment.kind == Segment::Kind::Noise ? noise[static_cast<size_t>(i)] : 0;
            if (segment.kind == Segment::Kind::Sine || segment.kind == Segment::Kind::Square) {
                value = segment.kind == Segment::Kind::Sine ? amplitude * std::sin(phase)
                        : std::sin(phase) >= 0              ? amplitude
                                                            : -amplitude;
                if (fade > 0)
                    value *= std::min({1.0, i / fade, (frames - 1 - i) / fade});
                phase = std::fmod(phase + 2 * std::numbers::pi * segment.frequency / sampleRate,
                                  2 * std::numbers::pi);
            }
            samples.insert(samples.end(), channels, static_cast<float>(value));
        }
    }
    // IEEE float: channels, rate, bytes a second and a frame, bits; then the samples.
    QFile file(path);
    const auto bytes = static_cast<quint32>(samples.size() * sizeof(float));
    QDataStream header(&file);
    header.setByteOrder(QDataStream::LittleEndian);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    header.writeRawData("RIFF", 4);
    header << quint32(36 + bytes);
    header.writeRawData("WAVEfmt ", 8);
    header << quint32(16) << quint16(3) << quint16(channels) << quint32(sampleRate)
           << quint32(sampleRate * channels * 4) << quint16(channels * 4) << quint16(32);
    header.writeRawData("data", 4);
    header << bytes;
    qToLittleEndian<float>(samples.data(), qsizetype(samples.size()), samples.data());
    return header.status() == QDataStream::Ok &&
           file.write(reinterpret_cast<const char *>(samples.data()), bytes) == bytes;
}

QString TestAudio::encode(const QString &ffmpegPath, const QString &wavPath,
                          const QString &outputPath, bool withCover)
{
    const QString extension = QFileInfo(outputPath).suffix().toLower();
    if (!withCover)
        return runFFmpeg(ffmpegPath, QStringList{u"-i"_s, wavPath} + codecFor(extension) +
                                         QStringList{outputPath});
    // LAME's MP3 with no tag of ffmpeg's, behind ours; an M4A made from that.
    const QString mp3 = extension == u"mp3" ? outputPath : outputPath + u".mp3"_s;
    QString problem = runFFmpeg(ffmpegPath, QStringList{u"-i"_s, wavPath} + codecFor(u"mp3"_s) +
                                                QStringList{u"-id3v2_version"_s, u"0"_s, mp3});
    QFile file(mp3);
    if (problem.isEmpty() && file.open(QIODevice::ReadWrite)) {
        const QByteArray audio = file.readAll();
        file.seek(0);
        file.write(id3WithCover() + audio);
        file.close();
    }
    if (problem.isEmpty() && mp3 != outputPath) {
        problem = runFFmpeg(ffmpegPath, QStringList{u"-i"_s, mp3} + codecFor(extension) +
                                            QStringList{u"-c:v"_s, u"copy"_s, outputPath});
        QFile::remove(mp3);
    }
    return problem;
}

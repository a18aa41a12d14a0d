// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestAudio.h"

#include "engine/CancellationToken.h"
#include "engine/EngineError.h"
#include "engine/FFmpegRunner.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace {

void putU32(QByteArray &out, quint32 value)
{
    char bytes[4];
    qToLittleEndian(value, bytes);
    out.append(bytes, 4);
}

void putU16(QByteArray &out, quint16 value)
{
    char bytes[2];
    qToLittleEndian(value, bytes);
    out.append(bytes, 2);
}

} // namespace

namespace {

// Gaussian noise through a 4th-order low-pass at 12 kHz (or 0.4 x the rate),
// scaled to the wanted RMS. Real material carries little above 20 kHz; white
// noise at 96 kHz would put half its weighted energy there, which a later
// resample to 44.1 kHz removes.
std::vector<double> bandLimitedNoise(qint64 frames, int sampleRate, double rms,
                                     std::mt19937 &random)
{
    std::normal_distribution<double> gaussian(0.0, 1.0);
    const double cutoff = std::min(12000.0, 0.4 * sampleRate);
    const double k = std::tan(std::numbers::pi * cutoff / sampleRate);
    const double q = std::numbers::sqrt2 / 2;
    const double norm = 1 / (1 + k / q + k * k);
    const double b0 = k * k * norm, b1 = 2 * b0, b2 = b0;
    const double a1 = 2 * (k * k - 1) * norm, a2 = (1 - k / q + k * k) * norm;
    std::vector<double> out(static_cast<size_t>(frames));
    double x1[2] = {}, x2[2] = {}, y1[2] = {}, y2[2] = {};
    double energy = 0;
    for (auto &sample : out) {
        double x = gaussian(random);
        for (int stage = 0; stage < 2; ++stage) {
            const double y =
                b0 * x + b1 * x1[stage] + b2 * x2[stage] - a1 * y1[stage] - a2 * y2[stage];
            x2[stage] = x1[stage];
            x1[stage] = x;
            y2[stage] = y1[stage];
            y1[stage] = y;
            x = y;
        }
        sample = x;
        energy += x * x;
    }
    const double scale = frames > 0 && energy > 0 ? rms / std::sqrt(energy / frames) : 0;
    for (auto &sample : out)
        sample = std::clamp(sample * scale, -1.0, 1.0);
    return out;
}

} // namespace

bool TestAudio::writeWav(const QString &path, int sampleRate, int channels,
                         const std::vector<Segment> &segments)
{
    std::vector<float> samples;
    std::mt19937 random(12345);
    double phase = 0;
    for (const Segment &segment : segments) {
        const auto frames = static_cast<qint64>(std::llround(segment.seconds * sampleRate));
        const double amplitude = std::pow(10.0, segment.levelDBFS / 20.0);
        const double step = 2 * std::numbers::pi * segment.frequency / sampleRate;
        const std::vector<double> noise =
            segment.kind == Segment::Kind::Noise
                ? bandLimitedNoise(frames, sampleRate, amplitude, random)
                : std::vector<double>();
        if (segment.phaseDegrees >= 0)
            phase = segment.phaseDegrees * std::numbers::pi / 180;
        const double fadeFrames = segment.fadeSeconds * sampleRate;
        for (qint64 i = 0; i < frames; ++i) {
            double value = 0;
            switch (segment.kind) {
            case Segment::Kind::Sine:
                value = amplitude * std::sin(phase);
                if (fadeFrames > 0)
                    value *= std::min({1.0, i / fadeFrames, (frames - 1 - i) / fadeFrames});
                phase = std::fmod(phase + step, 2 * std::numbers::pi);
                break;
            case Segment::Kind::Square:
                value = std::sin(phase) >= 0 ? amplitude : -amplitude;
                phase = std::fmod(phase + step, 2 * std::numbers::pi);
                break;
            case Segment::Kind::Noise:
                value = noise[static_cast<size_t>(i)];
                break;
            case Segment::Kind::Silence:
                break;
            }
            for (int c = 0; c < channels; ++c)
                samples.push_back(static_cast<float>(value));
        }
    }

    const auto dataBytes = static_cast<quint32>(samples.size() * sizeof(float));
    QByteArray header;
    header.append("RIFF");
    putU32(header, 4 + 8 + 16 + 8 + dataBytes);
    header.append("WAVEfmt ");
    putU32(header, 16);
    putU16(header, 3); // IEEE float
    putU16(header, static_cast<quint16>(channels));
    putU32(header, static_cast<quint32>(sampleRate));
    putU32(header, static_cast<quint32>(sampleRate * channels * 4));
    putU16(header, static_cast<quint16>(channels * 4));
    putU16(header, 32);
    header.append("data");
    putU32(header, dataBytes);

    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QByteArray body(dataBytes, Qt::Uninitialized);
    for (size_t i = 0; i < samples.size(); ++i)
        qToLittleEndian(samples[i], body.data() + i * sizeof(float));
    return file.write(header) == header.size() && file.write(body) == body.size();
}

namespace {

QString runFFmpeg(const QString &ffmpegPath, const QStringList &arguments)
{
    const FFmpegRunner runner(ffmpegPath);
    const CancellationToken never;
    try {
        const FFmpegResult result =
            runner.run(QStringList{QStringLiteral("-y"), QStringLiteral("-hide_banner"),
                                   QStringLiteral("-nostats")} +
                           arguments,
                       never);
        return result.exitCode == 0 ? QString() : result.standardError;
    } catch (const EngineError &error) {
        return error.describe();
    }
}

QByteArray coverPng()
{
    QImage image(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 4, y * 4, 128));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

QByteArray syncSafe(quint32 value)
{
    QByteArray bytes(4, 0);
    for (int i = 3; i >= 0; --i) {
        bytes[i] = static_cast<char>(value & 0x7f);
        value >>= 7;
    }
    return bytes;
}

// An ID3v2.3 tag holding one APIC frame (front cover, PNG).
QByteArray id3WithCover()
{
    QByteArray body;
    body.append('\0');                     // text encoding: ISO-8859-1
    body.append("image/png").append('\0'); // MIME type
    body.append('\x03');                   // picture type: front cover
    body.append('\0');                     // empty description
    body.append(coverPng());

    QByteArray frame("APIC");
    char size[4];
    qToBigEndian(static_cast<quint32>(body.size()), size);
    frame.append(size, 4).append(2, '\0').append(body);

    QByteArray tag("ID3");
    tag.append('\x03').append('\0').append('\0');
    tag.append(syncSafe(static_cast<quint32>(frame.size()))).append(frame);
    return tag;
}

} // namespace

QString TestAudio::encodeWithCover(const QString &ffmpegPath, const QString &wavPath,
                                   const QString &outputPath)
{
    const QString bareMp3 = outputPath + QStringLiteral(".bare.mp3");
    QString problem = runFFmpeg(ffmpegPath, {QStringLiteral("-i"), wavPath, QStringLiteral("-c:a"),
                                             QStringLiteral("libmp3lame"), QStringLiteral("-q:a"),
                                             QStringLiteral("2"), QStringLiteral("-id3v2_version"),
                                             QStringLiteral("0"), bareMp3});
    if (!problem.isEmpty())
        return problem;
    QFile bare(bareMp3);
    if (!bare.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot read ") + bareMp3;
    const QByteArray audio = bare.readAll();
    bare.remove();

    const bool wantsM4a = outputPath.endsWith(QStringLiteral(".m4a"), Qt::CaseInsensitive);
    const QString taggedMp3 = wantsM4a ? outputPath + QStringLiteral(".tagged.mp3") : outputPath;
    QFile tagged(taggedMp3);
    if (!tagged.open(QIODevice::WriteOnly) || tagged.write(id3WithCover() + audio) < 0)
        return QStringLiteral("cannot write ") + taggedMp3;
    tagged.close();
    if (!wantsM4a)
        return {};

    problem = runFFmpeg(ffmpegPath,
                        {QStringLiteral("-i"), taggedMp3, QStringLiteral("-c:a"),
                         QStringLiteral("aac"), QStringLiteral("-b:a"), QStringLiteral("256k"),
                         QStringLiteral("-c:v"), QStringLiteral("copy"), outputPath});
    QFile::remove(taggedMp3);
    return problem;
}

QString TestAudio::encode(const QString &ffmpegPath, const QString &wavPath,
                          const QString &outputPath)
{
    const QString extension = QFileInfo(outputPath).suffix().toLower();
    QStringList codec;
    if (extension == u"mp3")
        codec = {QStringLiteral("-c:a"), QStringLiteral("libmp3lame"), QStringLiteral("-q:a"),
                 QStringLiteral("2")};
    else if (extension == u"m4a")
        codec = {QStringLiteral("-c:a"), QStringLiteral("aac"), QStringLiteral("-b:a"),
                 QStringLiteral("256k")};
    else if (extension == u"wav")
        codec = {QStringLiteral("-c:a"), QStringLiteral("pcm_s16le")};
    else
        codec = {QStringLiteral("-c:a"), QStringLiteral("pcm_s24be")};

    return runFFmpeg(ffmpegPath,
                     QStringList{QStringLiteral("-i"), wavPath} + codec + QStringList{outputPath});
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "IndependentMeter.h"

#include <QProcess>
#include <QtEndian>

#include <cmath>
#include <ebur128.h>
#include <memory>

std::optional<IndependentMeter> IndependentMeter::read(const QString &path,
                                                       const QString &ffmpegPath)
{
    QProcess decoder;
    decoder.start(ffmpegPath, {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"),
                               path, QStringLiteral("-map"), QStringLiteral("0:a:0"),
                               QStringLiteral("-f"), QStringLiteral("wav"), QStringLiteral("-c:a"),
                               QStringLiteral("pcm_f32le"), QStringLiteral("-")});
    if (!decoder.waitForFinished(120000) || decoder.exitCode() != 0)
        return std::nullopt;
    // A WAV on a pipe: channels and rate where every fmt chunk has them, the
    // samples after the data chunk's header.
    const QByteArray wav = decoder.readAllStandardOutput();
    const qsizetype data = wav.indexOf("data", 36);
    if (data < 0)
        return std::nullopt;
    IndependentMeter reading;
    reading.channels = qFromLittleEndian<quint16>(wav.constData() + 22);
    reading.sampleRate = static_cast<int>(qFromLittleEndian<quint32>(wav.constData() + 24));
    const auto channels = static_cast<unsigned>(reading.channels);
    std::unique_ptr<ebur128_state, void (*)(ebur128_state *)> state(
        ebur128_init(channels, static_cast<unsigned long>(reading.sampleRate),
                     EBUR128_MODE_I | EBUR128_MODE_LRA | EBUR128_MODE_TRUE_PEAK),
        [](ebur128_state *s) { ebur128_destroy(&s); });
    const auto frames = static_cast<size_t>(wav.size() - data - 8) / (sizeof(float) * channels);
    if (!state ||
        ebur128_add_frames_float(state.get(),
                                 reinterpret_cast<const float *>(wav.constData() + data + 8),
                                 frames) != EBUR128_SUCCESS ||
        ebur128_loudness_global(state.get(), &reading.integratedLUFS) != EBUR128_SUCCESS ||
        ebur128_loudness_range(state.get(), &reading.loudnessRange) != EBUR128_SUCCESS)
        return std::nullopt;
    double peak = 0;
    for (unsigned c = 0; c < channels; ++c) {
        double channelPeak = 0;
        if (ebur128_true_peak(state.get(), c, &channelPeak) != EBUR128_SUCCESS)
            return std::nullopt;
        peak = std::max(peak, channelPeak);
    }
    reading.truePeakDBTP = 20 * std::log10(peak);
    return reading;
}

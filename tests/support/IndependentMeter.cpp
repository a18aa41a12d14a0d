// SPDX-License-Identifier: GPL-3.0-or-later
#include "IndependentMeter.h"

#include "MediaProbe.h"

#include <QProcess>

#include <cmath>
#include <ebur128.h>
#include <memory>

std::optional<IndependentMeter> IndependentMeter::read(const QString &path,
                                                       const QString &ffmpegPath)
{
    const auto probe = MediaProbe::read(path);
    if (!probe || probe->sampleRate <= 0 || probe->channels <= 0)
        return std::nullopt;
    QProcess decoder;
    decoder.start(ffmpegPath, {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"),
                               path, QStringLiteral("-map"), QStringLiteral("0:a:0"),
                               QStringLiteral("-f"), QStringLiteral("wav"), QStringLiteral("-c:a"),
                               QStringLiteral("pcm_f32le"), QStringLiteral("-")});
    if (!decoder.waitForFinished(120000) || decoder.exitCode() != 0)
        return std::nullopt;
    // A WAV on a pipe: the samples follow the data chunk's header.
    const QByteArray wav = decoder.readAllStandardOutput();
    const qsizetype data = wav.indexOf("data", 12);
    if (data < 0)
        return std::nullopt;
    const QByteArray samples = wav.mid(data + 8);

    const auto channels = static_cast<unsigned>(probe->channels);
    std::unique_ptr<ebur128_state, void (*)(ebur128_state *)> state(
        ebur128_init(channels, static_cast<unsigned long>(probe->sampleRate),
                     EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK),
        [](ebur128_state *s) { ebur128_destroy(&s); });
    if (!state)
        return std::nullopt;
    const size_t frames = static_cast<size_t>(samples.size()) / (sizeof(float) * channels);
    if (ebur128_add_frames_float(state.get(), reinterpret_cast<const float *>(samples.constData()),
                                 frames) != EBUR128_SUCCESS)
        return std::nullopt;

    IndependentMeter reading;
    reading.sampleRate = probe->sampleRate;
    reading.channels = probe->channels;
    if (ebur128_loudness_global(state.get(), &reading.integratedLUFS) != EBUR128_SUCCESS)
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "IndependentMeter.h"

#include <QProcess>
#include <QtEndian>

#include <cmath>
#include <ebur128.h>
#include <memory>

using namespace Qt::StringLiterals;

std::optional<IndependentMeter> IndependentMeter::read(const QString &path,
                                                       const QString &ffmpegPath)
{
    QProcess decoder;
    decoder.start(ffmpegPath, {u"-v"_s, u"error"_s, u"-i"_s, path, u"-map"_s, u"0:a:0"_s, u"-f"_s,
                               u"wav"_s, u"-c:a"_s, u"pcm_f32le"_s, u"-"_s});
    if (!decoder.waitForFinished(120000) || decoder.exitCode() != 0)
        return std::nullopt;
    // A WAV on a pipe: channels and rate where every fmt chunk has them, the
    // samples after the data chunk's header.
    const QByteArray wav = decoder.readAllStandardOutput();
    const qsizetype data = wav.indexOf("data", 36) + 8;
    if (data < 8)
        return std::nullopt;
    IndependentMeter reading;
    const auto channels = qFromLittleEndian<quint16>(wav.constData() + 22);
    std::unique_ptr<ebur128_state, void (*)(ebur128_state *)> state(
        ebur128_init(channels, qFromLittleEndian<quint32>(wav.constData() + 24),
                     EBUR128_MODE_I | EBUR128_MODE_LRA | EBUR128_MODE_TRUE_PEAK),
        [](ebur128_state *s) { ebur128_destroy(&s); });
    const auto frames = static_cast<size_t>(wav.size() - data) / (sizeof(float) * channels);
    if (!state ||
        ebur128_add_frames_float(state.get(),
                                 reinterpret_cast<const float *>(wav.constData() + data),
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

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

// What a file decodes to, measured by libebur128 (BS.1770-4: K-weighting,
// gating, true peak by its own oversampling): a meter that shares no code with
// ffmpeg's, so the tests never let Tonbrook's measurement check itself. The
// file is decoded by the given (bundled) ffmpeg to 32-bit float at its own
// rate and channel count.
struct IndependentMeter
{
    double integratedLUFS = 0;
    double truePeakDBTP = 0;
    double loudnessRange = 0;

    static std::optional<IndependentMeter> read(const QString &path, const QString &ffmpegPath);
};

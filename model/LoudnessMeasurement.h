// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

// The five figures of loudnorm's measuring pass. Values may be infinite:
// digital silence measures -inf, and that is a valid measurement.
struct LoudnessMeasurement
{
    double inputI = 0;       // integrated loudness, LUFS
    double inputTP = 0;      // true peak, dBTP
    double inputLRA = 0;     // loudness range, LU
    double inputThresh = 0;  // gating threshold, LUFS
    double targetOffset = 0; // offset loudnorm suggests for the requested target, LU

    friend bool operator==(const LoudnessMeasurement &, const LoudnessMeasurement &) = default;
};

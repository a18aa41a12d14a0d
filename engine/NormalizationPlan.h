// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/LoudnessMeasurement.h"

// The one static gain for one measured file.
struct NormalizationPlan
{
    double gain = 0;             // dB
    double expectedLUFS = 0;     // the output's integrated loudness
    double expectedTruePeak = 0; // dBTP
    // The ceiling held the gain back by more than 0.05 dB.
    bool isPeakLimited = false;

    // Uses the measured loudness and true peak only. A file whose loudness or
    // peak is not finite (silence) gets unity gain and is never limited; a
    // gain that would push the peak over the ceiling is cut to the largest
    // one that keeps the peak on it, also when that means turning down.
    static NormalizationPlan compute(const LoudnessMeasurement &measurement, double target,
                                     double truePeakCeiling);

    friend bool operator==(const NormalizationPlan &, const NormalizationPlan &) = default;
};

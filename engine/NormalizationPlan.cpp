// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/NormalizationPlan.h"

#include <cmath>

NormalizationPlan NormalizationPlan::compute(const LoudnessMeasurement &measurement, double target,
                                             double truePeakCeiling)
{
    const double loudness = measurement.inputI;
    const double peak = measurement.inputTP;
    if (!std::isfinite(loudness) || !std::isfinite(peak))
        return {0, loudness, peak, false};

    const double wanted = target - loudness;
    const double peakAfter = wanted + peak;
    if (truePeakCeiling >= peakAfter)
        return {wanted, target, peakAfter, false};

    const double allowed = truePeakCeiling - peak;
    // A shortfall of up to 0.05 dB still counts as reaching the target.
    return {allowed, loudness + allowed, truePeakCeiling, (wanted - 0.05) > allowed};
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/NormalizationPlan.h"
#include "model/LoudnessMeasurement.h"

#include <QString>

// The filter that applies a plan's one static gain in the processing pass.
//
// loudnorm is asked for linear mode, but it quietly falls back to dynamic gain
// riding (with a limiter, at 192 kHz) when its own linear test fails on the
// numbers it was given, when a measured value equals one of its "not given"
// defaults, or when the loudness range exceeds its target. So the numbers are
// written so that the test holds, the test is repeated on the text exactly as
// loudnorm will read it, and where it still cannot hold (or a number is
// outside loudnorm's option ranges, as for a clipped file above 0 LUFS) the
// same gain is applied with the volume filter instead.
struct GainFilter
{
    enum class Kind
    {
        // Loudness or peak not finite (silence, files under one gating block):
        // loudnorm rejects "-inf", and unity gain needs no filter.
        None,
        Loudnorm,
        Volume,
    };

    Kind kind = Kind::None;
    // The "-af" argument; empty for None.
    QString text;

    static GainFilter choose(const LoudnessMeasurement &measurement, const NormalizationPlan &plan,
                             double truePeakCeiling);
};

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/GainFilter.h"

#include "model/NumberFormat.h"

#include <algorithm>
#include <cmath>

namespace {

// A number as written on the command line, and as loudnorm will read it back.
struct Written
{
    QString text;
    double value = 0;

    explicit Written(double number)
        : text(NumberFormat::fixed(number, 2))
        , value(NumberFormat::parseDouble(text).value_or(qQNaN()))
    {}

    // loudnorm treats these exact values as "not measured"; the smallest step
    // into the valid range keeps its linear mode available.
    Written avoiding(double notMeasured, double step) const
    {
        return value == notMeasured ? Written(notMeasured + step) : *this;
    }

    bool within(double low, double high) const { return value >= low && value <= high; }
};

struct LoudnormOptions
{
    Written targetI;
    Written targetTP;
    Written targetLRA;
    Written measuredI;
    Written measuredLRA;
    Written measuredTP;
    Written measuredThresh;
    Written offset;

    bool inRange() const
    {
        return targetI.within(-70, -5) && targetTP.within(-9, 0) && targetLRA.within(1, 50) &&
               measuredI.within(-99, 0) && measuredLRA.within(0, 99) &&
               measuredTP.within(-99, 99) && measuredThresh.within(-99, 0) &&
               offset.within(-99, 99);
    }

    // loudnorm's own test, with its own arithmetic.
    bool runsLinear() const
    {
        const double gain = targetI.value - measuredI.value;
        const double peakAfter = measuredTP.value + gain;
        return measuredTP.value != 99 && measuredThresh.value != -70 && measuredLRA.value != 0 &&
               measuredI.value != 0 && peakAfter <= targetTP.value &&
               measuredLRA.value <= targetLRA.value;
    }

    QString text() const
    {
        return QStringLiteral("loudnorm=I=") + targetI.text + QStringLiteral(":TP=") +
               targetTP.text + QStringLiteral(":LRA=") + targetLRA.text +
               QStringLiteral(":measured_I=") + measuredI.text + QStringLiteral(":measured_LRA=") +
               measuredLRA.text + QStringLiteral(":measured_TP=") + measuredTP.text +
               QStringLiteral(":measured_thresh=") + measuredThresh.text +
               QStringLiteral(":offset=") + offset.text +
               QStringLiteral(":linear=true:print_format=summary");
    }
};

} // namespace

GainFilter GainFilter::choose(const LoudnessMeasurement &measurement, const NormalizationPlan &plan,
                              double truePeakCeiling)
{
    if (!std::isfinite(measurement.inputI) || !std::isfinite(measurement.inputTP))
        return {Kind::None, {}};

    const Written measuredLRA = Written(measurement.inputLRA).avoiding(0, 0.01);
    LoudnormOptions options{
        Written(plan.expectedLUFS),
        Written(truePeakCeiling),
        // Loudness range is not what Tonbrook changes: a target at least the
        // file's own range keeps loudnorm from compressing it.
        Written(std::clamp(measuredLRA.value, 7.0, 50.0)),
        Written(measurement.inputI).avoiding(0, -0.01),
        measuredLRA,
        Written(measurement.inputTP).avoiding(99, -0.01),
        Written(measurement.inputThresh).avoiding(-70, 0.01),
        Written(measurement.targetOffset),
    };
    // A peak-limited plan puts the peak exactly on the ceiling, and rounding
    // to two decimals lands it a hair above about half the time.
    if (!options.runsLinear())
        options.targetI = Written(options.targetI.value - 0.01);

    if (options.inRange() && options.runsLinear())
        return {Kind::Loudnorm, options.text()};
    return {Kind::Volume, QStringLiteral("volume=") + NumberFormat::fixed(plan.gain, 2) +
                              QStringLiteral("dB:precision=double")};
}

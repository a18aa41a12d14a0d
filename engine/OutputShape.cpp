// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputShape.h"

#include <cmath>

namespace {

bool inFamilyOf44100(int rate)
{
    return rate % 11025 == 0;
}

// The rate the encoder takes that is nearest to the wanted one, preferring
// its own family (multiples of 11 025 Hz, or of 8 000 Hz) so that resampling
// stays a simple ratio where it can.
int nearestTakenRate(int wanted, const QList<int> &taken)
{
    int best = 0;
    double bestDistance = 0;
    for (const bool sameFamilyOnly : {true, false}) {
        for (int rate : taken) {
            if (sameFamilyOnly && inFamilyOf44100(rate) != inFamilyOf44100(wanted))
                continue;
            const double distance = std::abs(std::log(double(rate) / wanted));
            if (best == 0 || distance < bestDistance || (distance == bestDistance && rate > best))
                best = rate, bestDistance = distance;
        }
        if (best != 0)
            break;
    }
    return best;
}

} // namespace

OutputShape OutputShape::decide(const AudioStreamFacts &source, const OutputEncoding &encoding,
                                SampleRateMode mode, bool gainApplied)
{
    OutputShape shape;
    const int sourceRate =
        source.sampleRate > 0 ? source.sampleRate : SampleRateModes::fallbackRate;
    shape.sampleRate = SampleRateModes::fixedRate(mode).value_or(sourceRate);
    const QList<int> taken = encoding.sampleRates();
    if (!taken.isEmpty() && !taken.contains(shape.sampleRate)) {
        const int nearest = nearestTakenRate(shape.sampleRate, taken);
        shape.changes.append({OutputChange::Kind::SampleRate, shape.sampleRate, nearest});
        shape.sampleRate = nearest;
    }

    shape.channels = source.channels;
    if (encoding.maxChannels() > 0 && source.channels > encoding.maxChannels()) {
        shape.channels = encoding.maxChannels();
        shape.downmixed = true;
        shape.changes.append({OutputChange::Kind::Channels, source.channels, shape.channels});
    }

    // Integer samples copied as they are, at the same rate and with no more
    // bits than the output keeps, need none; anything computed does.
    const int outputBits = encoding.integerBits();
    const bool exactCopy = !gainApplied && !source.isFloat && source.bits > 0 &&
                           source.bits <= outputBits && shape.sampleRate == sourceRate &&
                           !shape.downmixed;
    shape.dithered = outputBits > 0 && !exactCopy;
    return shape;
}

QStringList OutputShape::arguments() const
{
    QStringList arguments{QStringLiteral("-ar"), QString::number(sampleRate)};
    if (downmixed)
        arguments << QStringLiteral("-ac") << QString::number(channels);
    if (dithered)
        arguments << QStringLiteral("-dither_method") << QStringLiteral("triangular");
    return arguments;
}

bool OutputShape::differsFrom(const AudioStreamFacts &source, const OutputEncoding &encoding) const
{
    return encoding.isLossy() || sampleRate != source.sampleRate || channels != source.channels;
}

// SPDX-License-Identifier: GPL-3.0-or-later
//
// For any measurement (NaN, infinities and absurd values included) and any
// target and ceiling the settings allow, the filter text is one ffmpeg reads
// as meant: plain numbers with a "." decimal point, and either no filter, a
// linear loudnorm or a volume gain.
#include "engine/GainFilter.h"

#include <QRegularExpression>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

double take(const uint8_t *&data, size_t &size)
{
    double value = 0;
    if (size >= sizeof value) {
        std::memcpy(&value, data, sizeof value);
        data += sizeof value;
        size -= sizeof value;
    }
    return value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const LoudnessMeasurement measurement{take(data, size), take(data, size), take(data, size),
                                          take(data, size), take(data, size)};
    const double rawTarget = take(data, size);
    const double rawCeiling = take(data, size);
    // The settings hold a target of -70..-5 LUFS and a ceiling of -9..0 dBTP.
    const double target =
        std::isfinite(rawTarget) ? -70 + std::fmod(std::fabs(rawTarget), 65.0) : -23;
    const double ceiling = std::isfinite(rawCeiling) ? -std::fmod(std::fabs(rawCeiling), 9.0) : -1;

    const NormalizationPlan plan = NormalizationPlan::compute(measurement, target, ceiling);
    const GainFilter filter = GainFilter::choose(measurement, plan, ceiling);
    const auto fail = [&filter] {
        std::fprintf(stderr, "filter: %s\n", qPrintable(filter.text));
        std::abort();
    };
    static const QRegularExpression loudnorm(QStringLiteral(
        "^loudnorm=I=-?\\d+\\.\\d+:TP=-?\\d+\\.\\d+:LRA=\\d+\\.\\d+:measured_I=-?\\d+\\.\\d+"
        ":measured_LRA=\\d+\\.\\d+:measured_TP=-?\\d+\\.\\d+:measured_thresh=-?\\d+\\.\\d+"
        ":offset=-?\\d+\\.\\d+:linear=true:print_format=summary$"));
    static const QRegularExpression volume(
        QStringLiteral("^volume=-?\\d+\\.\\d+dB:precision=double$"));
    switch (filter.kind) {
    case GainFilter::Kind::None:
        if (!filter.text.isEmpty())
            fail();
        break;
    case GainFilter::Kind::Loudnorm:
        if (!loudnorm.match(filter.text).hasMatch())
            fail();
        break;
    case GainFilter::Kind::Volume:
        if (!volume.match(filter.text).hasMatch())
            fail();
        break;
    }
    return 0;
}

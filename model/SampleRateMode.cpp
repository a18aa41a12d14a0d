// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/SampleRateMode.h"

#include "model/RawValues.h"

namespace SampleRateModes {

namespace {
constexpr RawValueTable<all.size()> raw{u"preserveOriginal", u"rate44100", u"rate48000"};
}

QString rawValue(SampleRateMode mode)
{
    return rawValueIn(raw, mode);
}

std::optional<SampleRateMode> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, raw, text);
}

std::optional<int> fixedRate(SampleRateMode mode)
{
    switch (mode) {
    case SampleRateMode::PreserveOriginal:
        return std::nullopt;
    case SampleRateMode::Rate44100:
        return 44100;
    case SampleRateMode::Rate48000:
        return 48000;
    }
    return std::nullopt;
}

} // namespace SampleRateModes

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

enum class SampleRateMode
{
    PreserveOriginal,
    Rate44100,
    Rate48000,
};

namespace SampleRateModes {

inline constexpr std::array all{SampleRateMode::PreserveOriginal, SampleRateMode::Rate44100,
                                SampleRateMode::Rate48000};

// The rate used when the source's own cannot be read.
inline constexpr int fallbackRate = 48000;

QString rawValue(SampleRateMode mode);
std::optional<SampleRateMode> fromRawValue(QStringView text);
// The fixed rate of a mode, or absent for PreserveOriginal.
std::optional<int> fixedRate(SampleRateMode mode);

} // namespace SampleRateModes

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/RawValues.h"

#include <QString>

#include <array>
#include <optional>

// PCM sample size; lossy outputs ignore it.
enum class OutputBitDepth
{
    Bit16 = 16,
    Bit24 = 24,
};

namespace OutputBitDepths {

inline constexpr std::array all{OutputBitDepth::Bit16, OutputBitDepth::Bit24};

inline int rawValue(OutputBitDepth depth)
{
    return static_cast<int>(depth);
}

inline std::optional<OutputBitDepth> fromRawValue(int bits)
{
    return enumFromRawValue(all, bits, rawValue);
}

// "16-bit", "24-bit".
inline QString label(OutputBitDepth depth)
{
    return QString::number(rawValue(depth)) + QStringLiteral("-bit");
}

} // namespace OutputBitDepths

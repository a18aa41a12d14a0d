// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
    return bits == 16   ? std::optional(OutputBitDepth::Bit16)
           : bits == 24 ? std::optional(OutputBitDepth::Bit24)
                        : std::nullopt;
}

// "16-bit", "24-bit".
inline QString label(OutputBitDepth depth)
{
    return QString::number(rawValue(depth)) + QStringLiteral("-bit");
}

} // namespace OutputBitDepths

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

// PCM sample format; lossy outputs ignore it.
enum class OutputBitDepth
{
    Bit16 = 16,
    Bit24 = 24,
    // 32-bit floating point: keeps peaks above full scale.
    Float32 = 32,
};

namespace OutputBitDepths {

inline constexpr std::array all{OutputBitDepth::Bit16, OutputBitDepth::Bit24,
                                OutputBitDepth::Float32};

inline int rawValue(OutputBitDepth depth)
{
    return static_cast<int>(depth);
}

inline std::optional<OutputBitDepth> fromRawValue(int bits)
{
    for (OutputBitDepth depth : all)
        if (rawValue(depth) == bits)
            return depth;
    return std::nullopt;
}

} // namespace OutputBitDepths

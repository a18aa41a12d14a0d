// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <optional>

// The reverse of an enumeration's rawValue(): exact and case-sensitive, absent
// for any text that is not one of the raw values.
template<typename Enum, std::size_t N, typename Raw, typename RawValueOf>
std::optional<Enum> enumFromRawValue(const std::array<Enum, N> &cases, const Raw &raw,
                                     RawValueOf rawValue)
{
    for (Enum value : cases) {
        if (raw == rawValue(value))
            return value;
    }
    return std::nullopt;
}

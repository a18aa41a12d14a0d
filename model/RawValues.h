// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

// Raw values of an enumeration whose cases are numbered 0..N-1 in declaration
// order, written once as a table in that order.
template<std::size_t N>
using RawValueTable = std::array<std::u16string_view, N>;

template<typename Enum, std::size_t N>
QString rawValueIn(const RawValueTable<N> &table, Enum value)
{
    return QStringView(table[static_cast<std::size_t>(value)]).toString();
}

// The reverse: exact and case-sensitive, absent for any text that is not one
// of the raw values.
template<typename Enum, std::size_t N>
std::optional<Enum> enumFromRawValue(const std::array<Enum, N> &cases,
                                     const RawValueTable<N> &table, QStringView text)
{
    const auto found = std::find_if(table.begin(), table.end(), [text](std::u16string_view raw) {
        return QStringView(raw) == text;
    });
    if (found == table.end())
        return std::nullopt;
    return cases[static_cast<std::size_t>(found - table.begin())];
}

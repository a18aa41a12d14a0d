// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace NumberFormat {

QString fixed(double value, int decimals)
{
    // Large enough for DBL_MAX written out in full plus the fraction.
    std::array<char, 400> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::fixed, decimals);
    if (error != std::errc())
        return {};
    return QString::fromLatin1(buffer.data(), end - buffer.data());
}

QString signedFixed(double value, int decimals)
{
    const QString text = fixed(value, decimals);
    if (text.startsWith(u'-') || std::isnan(value))
        return text;
    return u'+' + text;
}

std::optional<double> parseDouble(QStringView text)
{
    if (text.isEmpty() ||
        std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0x7f; }))
        return std::nullopt;
    const QByteArray bytes = text.toLatin1();
    double value = 0;
    const char *begin = bytes.constData();
    const char *end = begin + bytes.size();
    const auto [last, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || last != end)
        return std::nullopt;
    return value;
}

} // namespace NumberFormat

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

// C's "%.Nf" and "%+.Nf" with a "." separator whatever the user's locale.
// Everything that reaches ffmpeg's command line, the CSV report or the screen
// as a fixed-point number goes through here, because Qt's own formatting
// rounds exact halves away from zero and drops the sign of -0.0, and the C
// library's follows LC_NUMERIC.
namespace NumberFormat {

QString fixed(double value, int decimals);
QString signedFixed(double value, int decimals);

// C-locale decimal text to double; the whole text must be a number, with no
// surrounding space, grouping or leading '+'.
std::optional<double> parseDouble(QStringView text);

} // namespace NumberFormat

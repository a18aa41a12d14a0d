// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

// The output container chosen in the format panel; KeepOriginal writes each
// file in its own format.
enum class OutputFormatMode
{
    KeepOriginal,
    Wav,
    Aiff,
    Mp3,
    Caf,
};

namespace OutputFormatModes {

inline constexpr std::array all{OutputFormatMode::KeepOriginal, OutputFormatMode::Wav,
                                OutputFormatMode::Aiff, OutputFormatMode::Mp3,
                                OutputFormatMode::Caf};

QString rawValue(OutputFormatMode mode);
std::optional<OutputFormatMode> fromRawValue(QStringView text);

} // namespace OutputFormatModes

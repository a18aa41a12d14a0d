// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

// The container of a queued file, named by its extension. aiff and aif are
// kept apart so that a kept-original output can repeat the source's spelling.
enum class SourceAudioFormat
{
    Wav,
    Aiff,
    Aif,
    Mp3,
    M4a,
    Caf,
};

namespace SourceAudioFormats {

// In matching order.
inline constexpr std::array all{SourceAudioFormat::Wav, SourceAudioFormat::Aiff,
                                SourceAudioFormat::Aif, SourceAudioFormat::Mp3,
                                SourceAudioFormat::M4a, SourceAudioFormat::Caf};

QString rawValue(SourceAudioFormat format);
// Exact, case-sensitive: callers lower-case a file's extension first.
std::optional<SourceAudioFormat> fromRawValue(QStringView text);
// The format a file name's extension names, ignoring case; absent without one.
std::optional<SourceAudioFormat> fromFileName(QStringView fileName);
// The extension, lower-case, of a file in an audio format Tonbrook does not
// read ("flac", "ogg", ...); absent for the formats it reads and for
// anything that is not audio.
std::optional<QString> otherAudioExtension(QStringView fileName);

} // namespace SourceAudioFormats

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/SourceAudioFormat.h"

#include "model/RawValues.h"

namespace SourceAudioFormats {

QString rawValue(SourceAudioFormat format)
{
    switch (format) {
    case SourceAudioFormat::Wav:
        return QStringLiteral("wav");
    case SourceAudioFormat::Aiff:
        return QStringLiteral("aiff");
    case SourceAudioFormat::Aif:
        return QStringLiteral("aif");
    case SourceAudioFormat::Mp3:
        return QStringLiteral("mp3");
    case SourceAudioFormat::M4a:
        return QStringLiteral("m4a");
    case SourceAudioFormat::Caf:
        return QStringLiteral("caf");
    }
    return {};
}

std::optional<SourceAudioFormat> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, text, rawValue);
}

std::optional<SourceAudioFormat> fromFileName(QStringView fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    if (dot < 0)
        return std::nullopt;
    return fromRawValue(fileName.mid(dot + 1).toString().toLower());
}

} // namespace SourceAudioFormats

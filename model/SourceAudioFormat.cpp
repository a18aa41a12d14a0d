// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/SourceAudioFormat.h"

#include "model/RawValues.h"

namespace SourceAudioFormats {

namespace {
constexpr RawValueTable<all.size()> raw{u"wav", u"aiff", u"aif", u"mp3", u"m4a", u"caf"};
}

QString rawValue(SourceAudioFormat format)
{
    return rawValueIn(raw, format);
}

std::optional<SourceAudioFormat> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, raw, text);
}

std::optional<SourceAudioFormat> fromFileName(QStringView fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    if (dot < 0)
        return std::nullopt;
    return fromRawValue(fileName.mid(dot + 1).toString().toLower());
}

} // namespace SourceAudioFormats

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/SourceAudioFormat.h"

#include "model/RawValues.h"

#include <QStringList>

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

std::optional<QString> otherAudioExtension(QStringView fileName)
{
    // Formats a sound library holds beside those Tonbrook reads.
    static const QStringList others{
        QStringLiteral("flac"), QStringLiteral("ogg"), QStringLiteral("oga"),
        QStringLiteral("opus"), QStringLiteral("wma"), QStringLiteral("m4b"),
        QStringLiteral("mp2"),  QStringLiteral("ac3"), QStringLiteral("ape"),
        QStringLiteral("wv"),   QStringLiteral("mka"), QStringLiteral("w64"),
        QStringLiteral("rf64"), QStringLiteral("bwf"), QStringLiteral("aifc"),
        QStringLiteral("au"),   QStringLiteral("snd"), QStringLiteral("mp4"),
        QStringLiteral("aac"),  QStringLiteral("dsf"), QStringLiteral("dff"),
        QStringLiteral("amr"),  QStringLiteral("alac")};
    const qsizetype dot = fileName.lastIndexOf(u'.');
    if (dot <= 0)
        return std::nullopt;
    const QString extension = fileName.mid(dot + 1).toString().toLower();
    return others.contains(extension) ? std::optional(extension) : std::nullopt;
}

} // namespace SourceAudioFormats

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/AudioCategory.h"

#include "model/RawValues.h"

namespace AudioCategories {

namespace {
constexpr RawValueTable<all.size()> raw{u"music", u"ambience", u"sfx", u"voice", u"other"};
}

QString rawValue(AudioCategory category)
{
    return rawValueIn(raw, category);
}

std::optional<AudioCategory> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, raw, text);
}

} // namespace AudioCategories

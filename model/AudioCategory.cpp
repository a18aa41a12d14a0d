// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/AudioCategory.h"

#include "model/RawValues.h"

namespace AudioCategories {

QString rawValue(AudioCategory category)
{
    switch (category) {
    case AudioCategory::Music:
        return QStringLiteral("music");
    case AudioCategory::Ambience:
        return QStringLiteral("ambience");
    case AudioCategory::Sfx:
        return QStringLiteral("sfx");
    case AudioCategory::Voice:
        return QStringLiteral("voice");
    case AudioCategory::Other:
        return QStringLiteral("other");
    }
    return {};
}

std::optional<AudioCategory> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, text, rawValue);
}

} // namespace AudioCategories

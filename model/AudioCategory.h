// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

// A content category carried by every queue item and reserved for later use:
// nothing infers it, so every imported item is Other.
enum class AudioCategory
{
    Music,
    Ambience,
    Sfx,
    Voice,
    Other,
};

namespace AudioCategories {

inline constexpr std::array all{AudioCategory::Music, AudioCategory::Ambience, AudioCategory::Sfx,
                                AudioCategory::Voice, AudioCategory::Other};

QString rawValue(AudioCategory category);
std::optional<AudioCategory> fromRawValue(QStringView text);

} // namespace AudioCategories

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LoudnessPreset.h"

#include <QHashFunctions>

const QList<LoudnessPreset> &LoudnessPreset::builtIn()
{
    static const QList<LoudnessPreset> presets{
        {QStringLiteral("theatre_ambience"), -32, false},
        {QStringLiteral("active_ambience"), -29, false},
        {QStringLiteral("music_playback"), -26, false},
        {QStringLiteral("voice_dialogue"), -23, false},
        {QStringLiteral("podcast"), -16, false},
        {QStringLiteral("streaming"), -14, false},
        {QStringLiteral("custom"), std::nullopt, true},
    };
    return presets;
}

std::optional<LoudnessPreset> LoudnessPreset::builtIn(QStringView id)
{
    for (const LoudnessPreset &preset : builtIn()) {
        if (preset.id == id)
            return preset;
    }
    return std::nullopt;
}

size_t qHash(const LoudnessPreset &preset, size_t seed) noexcept
{
    return qHashMulti(seed, preset.id, preset.targetLUFS.has_value(), preset.targetLUFS.value_or(0),
                      preset.isCustom);
}

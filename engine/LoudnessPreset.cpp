// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnessPreset.h"

#include "engine/NumberFormat.h"
#include "localization/L.h"

#include <QHashFunctions>

const QList<LoudnessPreset> &LoudnessPreset::builtIn()
{
    static const QList<LoudnessPreset> presets{
        {QStringLiteral("theatre_ambience"), QStringLiteral("Theatre Ambience"), -32, false},
        {QStringLiteral("active_ambience"), QStringLiteral("Active Ambience"), -29, false},
        {QStringLiteral("music_playback"), QStringLiteral("Music / Playback"), -26, false},
        {QStringLiteral("voice_dialogue"), QStringLiteral("Voice / Dialogue"), -23, false},
        {QStringLiteral("podcast"), QStringLiteral("Podcast"), -16, false},
        {QStringLiteral("streaming"), QStringLiteral("Streaming"), -14, false},
        {QStringLiteral("custom"), QStringLiteral("Custom"), std::nullopt, true},
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

QString LoudnessPreset::localizedName() const
{
    return L::presetName(id).value_or(name);
}

QString LoudnessPreset::localizedDisplayLabel() const
{
    if (!targetLUFS)
        return localizedName();
    return localizedName() + u' ' + NumberFormat::fixed(*targetLUFS, 0) + QStringLiteral(" LUFS");
}

size_t qHash(const LoudnessPreset &preset, size_t seed) noexcept
{
    return qHashMulti(seed, preset.id, preset.name, preset.targetLUFS.has_value(),
                      preset.targetLUFS.value_or(0), preset.isCustom);
}

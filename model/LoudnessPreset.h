// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <optional>

// A named loudness target. The built-in list is fixed; the custom preset has
// no target of its own and takes the settings' custom value.
struct LoudnessPreset
{
    QString id;
    std::optional<double> targetLUFS;
    bool isCustom = false;

    // In picker order: theatre ambience (-32) to streaming (-14), then custom.
    static const QList<LoudnessPreset> &builtIn();
    static std::optional<LoudnessPreset> builtIn(QStringView id);

    friend bool operator==(const LoudnessPreset &, const LoudnessPreset &) = default;
};

size_t qHash(const LoudnessPreset &preset, size_t seed = 0) noexcept;

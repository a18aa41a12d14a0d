// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ProcessingSettings.h"

#include <cmath>

double ProcessingSettings::effectiveTargetLUFS() const
{
    if (selectedPreset.isCustom || !selectedPreset.targetLUFS)
        return customTargetLUFS;
    return *selectedPreset.targetLUFS;
}

bool ProcessingSettings::isTargetInRange(double target)
{
    return std::isfinite(target) && target >= minimumTarget && target <= maximumTarget;
}

bool ProcessingSettings::isCeilingInRange(double ceiling)
{
    return std::isfinite(ceiling) && ceiling >= minimumCeiling && ceiling <= maximumCeiling;
}

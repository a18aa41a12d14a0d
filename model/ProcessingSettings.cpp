// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ProcessingSettings.h"

double ProcessingSettings::effectiveTargetLUFS() const
{
    if (selectedPreset.isCustom || !selectedPreset.targetLUFS)
        return customTargetLUFS;
    return *selectedPreset.targetLUFS;
}

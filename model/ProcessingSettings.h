// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/LoudnessPreset.h"
#include "model/OutputBitDepth.h"
#include "model/OutputFormatMode.h"
#include "model/SampleRateMode.h"

#include <QString>

#include <optional>

// The user's choices for a run. Every job gets its own copy, so edits made
// while a run goes on apply to the next run only.
struct ProcessingSettings
{
    bool normalizeLoudness = true;
    LoudnessPreset selectedPreset = LoudnessPreset::builtIn().front();
    double customTargetLUFS = -32.0;
    double truePeakCeiling = -1.0;
    SampleRateMode sampleRateMode = SampleRateMode::PreserveOriginal;
    OutputBitDepth bitDepth = OutputBitDepth::Bit24;
    OutputFormatMode outputFormatMode = OutputFormatMode::KeepOriginal;
    // Absolute path of the folder that receives the output.
    std::optional<QString> outputFolderURL;
    bool revealInFinderWhenComplete = true;
    bool addPrefix = false;
    QString prefix = QStringLiteral("LUFS_");

    // The loudness files are normalised to: the custom value for the custom
    // preset or a preset without a target, else the preset's own.
    double effectiveTargetLUFS() const;

    friend bool operator==(const ProcessingSettings &, const ProcessingSettings &) = default;
};

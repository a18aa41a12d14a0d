// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/LoudnessPreset.h"
#include "model/OutputBitDepth.h"
#include "model/OutputFormatMode.h"
#include "model/SampleRateMode.h"

#include <QString>

#include <optional>

// The user's choices for a run. Every job gets its own copy, so edits made
// while a run goes on apply to the next run only.
struct ProcessingSettings
{
    // The values a custom target and a ceiling may take, in LUFS and dBTP.
    static constexpr double minimumTarget = -70;
    static constexpr double maximumTarget = -5;
    static constexpr double minimumCeiling = -9;
    static constexpr double maximumCeiling = 0;

    bool normalizeLoudness = true;
    LoudnessPreset selectedPreset = LoudnessPreset::builtIn().front();
    double customTargetLUFS = -32.0;
    double truePeakCeiling = -1.0;
    SampleRateMode sampleRateMode = SampleRateMode::PreserveOriginal;
    OutputBitDepth bitDepth = OutputBitDepth::Bit24;
    OutputFormatMode outputFormatMode = OutputFormatMode::KeepOriginal;
    // Absolute path of the folder that receives the output.
    std::optional<QString> outputFolder;
    bool revealInFinderWhenComplete = true;
    bool addPrefix = false;
    QString prefix = QStringLiteral("LUFS_");
    // A file whose output is already there, under the name a run into an
    // empty folder would give it, is left as it is (resuming a run).
    bool skipExisting = false;

    // The loudness files are normalised to: the custom value for the custom
    // preset or a preset without a target, else the preset's own.
    double effectiveTargetLUFS() const;

    static bool isTargetInRange(double target);
    static bool isCeilingInRange(double ceiling);

    friend bool operator==(const ProcessingSettings &, const ProcessingSettings &) = default;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ProcessingOutcome.h"

#include <QString>

#include <optional>

// What happened to one file. The figures are the plan's predictions, not a
// measurement of the output; a figure is absent where it does not apply
// (plain conversion) or is not finite (a silent file).
struct ProcessingResult
{
    QString sourceFileName;
    QString outputFileName;
    std::optional<double> originalLUFS;
    std::optional<double> finalLUFS;
    std::optional<double> appliedGain;
    std::optional<double> truePeak;
    ProcessingOutcome outcome = ProcessingOutcome::Success;
    std::optional<QString> warningMessage;

    friend bool operator==(const ProcessingResult &, const ProcessingResult &) = default;
};

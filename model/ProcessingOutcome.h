// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <optional>

enum class ProcessingOutcome
{
    Success,
    PeakLimited,
    Failed,
    Cancelled,
    // Converted without normalising into integer PCM, which clipped peaks
    // above full scale.
    Clipped,
    // Not written again: the output an earlier run wrote is already there.
    Skipped,
};

namespace ProcessingOutcomes {

inline constexpr std::array all{ProcessingOutcome::Success, ProcessingOutcome::PeakLimited,
                                ProcessingOutcome::Failed,  ProcessingOutcome::Cancelled,
                                ProcessingOutcome::Clipped, ProcessingOutcome::Skipped};

// English and fixed: also the report's status column.
QString rawValue(ProcessingOutcome outcome);
std::optional<ProcessingOutcome> fromRawValue(QStringView text);

} // namespace ProcessingOutcomes

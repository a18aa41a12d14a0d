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
};

namespace ProcessingOutcomes {

inline constexpr std::array all{ProcessingOutcome::Success, ProcessingOutcome::PeakLimited,
                                ProcessingOutcome::Failed, ProcessingOutcome::Cancelled,
                                ProcessingOutcome::Clipped};

// English and fixed: also the report's status column.
QString rawValue(ProcessingOutcome outcome);
std::optional<ProcessingOutcome> fromRawValue(QStringView text);

} // namespace ProcessingOutcomes

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ProcessingOutcome.h"

#include "model/RawValues.h"

namespace ProcessingOutcomes {

QString rawValue(ProcessingOutcome outcome)
{
    switch (outcome) {
    case ProcessingOutcome::Success:
        return QStringLiteral("Success");
    case ProcessingOutcome::PeakLimited:
        return QStringLiteral("Peak limited");
    case ProcessingOutcome::Failed:
        return QStringLiteral("Failed");
    case ProcessingOutcome::Cancelled:
        return QStringLiteral("Cancelled");
    }
    return {};
}

std::optional<ProcessingOutcome> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, text, rawValue);
}

} // namespace ProcessingOutcomes

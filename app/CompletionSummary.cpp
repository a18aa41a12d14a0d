// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CompletionSummary.h"

CompletionSummary CompletionSummary::of(const QList<ProcessingResult> &results, bool normalized)
{
    CompletionSummary summary;
    summary.normalized = normalized;
    for (const ProcessingResult &result : results) {
        switch (result.outcome) {
        case ProcessingOutcome::Success:
        case ProcessingOutcome::Clipped: // written; its row says what it lost
            ++summary.reachedTarget;
            break;
        case ProcessingOutcome::PeakLimited:
            ++summary.peakLimited;
            break;
        case ProcessingOutcome::Failed:
            ++summary.failed;
            break;
        case ProcessingOutcome::Cancelled:
            continue;
        case ProcessingOutcome::Skipped:
            ++summary.skipped;
            continue;
        }
        ++summary.totalProcessed;
    }
    return summary;
}

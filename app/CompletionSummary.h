// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ProcessingResult.h"

#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

// Totals of a finished run, for the completion screen.
struct CompletionSummary
{
    Q_GADGET
    QML_VALUE_TYPE(completionSummary)
    Q_PROPERTY(int totalProcessed MEMBER totalProcessed CONSTANT)
    Q_PROPERTY(int reachedTarget MEMBER reachedTarget CONSTANT)
    Q_PROPERTY(int peakLimited MEMBER peakLimited CONSTANT)
    Q_PROPERTY(int failed MEMBER failed CONSTANT)
    Q_PROPERTY(int skipped MEMBER skipped CONSTANT)
    Q_PROPERTY(bool normalized MEMBER normalized CONSTANT)

public:
    // Files of the run that finished, one way or another (written or failed).
    int totalProcessed = 0;
    // Written at the target (or, converting only, written).
    int reachedTarget = 0;
    // Written below the target, held back by the true-peak ceiling.
    int peakLimited = 0;
    int failed = 0;
    // Whether the run normalised or only converted.
    bool normalized = true;
    // Left as they were: their output was already there. Not among the processed.
    int skipped = 0;

    // The totals of a run's results; cancelled files do not count.
    static CompletionSummary of(const QList<ProcessingResult> &results, bool normalized);

    friend bool operator==(const CompletionSummary &, const CompletionSummary &) = default;
};

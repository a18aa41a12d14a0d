// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "JobGate.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/ProcessingError.h"
#include "model/StandardPath.h"

#include <optional>

// Answers with the measurement released for a file, or fails for nullopt.
class GatedAnalyzer final : public LoudnessAnalyzing
{
public:
    using Answer = std::optional<LoudnessMeasurement>;
    JobGate<Answer> gate;

    LoudnessMeasurement analyze(const QString &filePath, double, double,
                                const CancellationToken &cancellation) const override
    {
        const Answer answer = const_cast<JobGate<Answer> &>(gate).await(fileNameOf(filePath),
                                                                        cancellation, std::nullopt);
        if (!answer)
            throw ProcessingError::analysisFailed(QStringLiteral("no measurement"));
        return *answer;
    }
};

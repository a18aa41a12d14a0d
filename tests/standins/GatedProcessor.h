// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "JobGate.h"
#include "engine/LoudnessProcessing.h"
#include "engine/ProcessingError.h"
#include "model/StandardPath.h"

#include <QHash>

#include <functional>
#include <mutex>

// Answers with what the released function returns or throws; a cancelled
// job ends the way the real service ends one.
class GatedProcessor final : public LoudnessProcessing
{
public:
    using Answer = std::function<ProcessingResult()>;
    JobGate<Answer> gate;

    ProcessingResult process(const AudioFileItem &item, const QString &destination,
                             const OutputEncoding &, const ProcessingSettings &,
                             const CancellationToken &cancellation) const override
    {
        {
            const std::lock_guard lock(m_mutex);
            m_destinations.insert(fileNameOf(item.sourcePath), destination);
        }
        const Answer answer = const_cast<JobGate<Answer> &>(gate).await(
            fileNameOf(item.sourcePath), cancellation,
            []() -> ProcessingResult { throw ProcessingError::cancelled(); });
        return answer();
    }

    // Says it is half-way as soon as it starts, then waits like process().
    ProcessingResult processReporting(const AudioFileItem &item, const QString &destination,
                                      const OutputEncoding &encoding,
                                      const ProcessingSettings &settings,
                                      const CancellationToken &cancellation,
                                      const ProgressListener &progress) const override
    {
        if (progress)
            progress(0.5);
        return process(item, destination, encoding, settings, cancellation);
    }

    QString destinationOf(const QString &name) const
    {
        const std::lock_guard lock(m_mutex);
        return m_destinations.value(name);
    }

    static Answer writes(ProcessingOutcome outcome = ProcessingOutcome::Success)
    {
        return [outcome] {
            ProcessingResult result{.sourceFileName = QStringLiteral("x.wav"),
                                    .outputFileName = QStringLiteral("x.wav"),
                                    .originalLUFS = -20.0,
                                    .finalLUFS = -14.0,
                                    .appliedGain = 6.0,
                                    .truePeak = -1.0,
                                    .outcome = outcome};
            if (outcome == ProcessingOutcome::PeakLimited)
                result.warningMessage = QStringLiteral("Target -20.00 \u2192 held back");
            return result;
        };
    }

    static Answer fails(ProcessingError error)
    {
        return [error]() -> ProcessingResult { throw error; };
    }

private:
    mutable std::mutex m_mutex;
    mutable QHash<QString, QString> m_destinations;
};

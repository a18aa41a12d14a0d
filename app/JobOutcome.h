// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FriendlyError.h"
#include "model/ProcessingResult.h"
#include "model/ProcessingStatus.h"

#include <QString>

#include <functional>
#include <optional>
#include <variant>

// Why a processing job has no result.
struct JobFailure
{
    enum class Kind
    {
        // The user stopped it.
        Cancelled,
        // The bundled ffmpeg is missing or cannot start: not the file's fault.
        InstallationFault,
        // The file could not be processed.
        Failed,
    };
    Kind kind = Kind::Failed;
    // For Failed: what the user reads.
    FriendlyError error;
    // For InstallationFault: the system's reason.
    QString installationReason;
};

// What a processing job came back with: its result, or why there is none.
using JobOutput = std::variant<ProcessingResult, JobFailure>;

// What a finished job changes in its queue item.
struct ItemChange
{
    ProcessingStatus status;
    // The result, or the record of a cancelled or failed job; absent when the
    // item goes back to the queue untouched (an installation fault).
    std::optional<ProcessingResult> result;
    std::optional<QString> errorDetails;
    // Measured again when the file had changed since: the loudness actually used.
    std::optional<double> measuredLUFS;
    // Set when the installation, not the file, is at fault; every run stops.
    std::optional<QString> installationFault;
};

namespace JobOutcome {

// Runs a job, turning whatever it throws into the failure it stands for.
JobOutput run(const std::function<ProcessingResult()> &job, const QString &sourceName);

// The item's change for a job's output. `cancelled`: the user had cancelled
// the run by the time the job ended, so a failure counts as a cancellation
// (stopping ffmpeg half-way makes a pass fail on purpose).
ItemChange itemChange(const JobOutput &output, bool cancelled, const QString &sourceName,
                      const QString &destination);

} // namespace JobOutcome

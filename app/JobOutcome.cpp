// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/JobOutcome.h"

#include "engine/ErrorTranslator.h"
#include "engine/FFmpegError.h"
#include "engine/ProcessingError.h"
#include "localization/L.h"
#include "model/StandardPath.h"

namespace JobOutcome {

JobOutput run(const std::function<ProcessingResult()> &job, const QString &sourceName)
{
    try {
        return job();
    } catch (const ProcessingError &error) {
        if (error.kind() == ProcessingError::Kind::Cancelled)
            return JobFailure{.kind = JobFailure::Kind::Cancelled};
        return JobFailure{.error = ErrorTranslator::translate(error, sourceName)};
    } catch (const FFmpegError &error) {
        if (const auto fault = error.installationFault())
            return JobFailure{.kind = JobFailure::Kind::InstallationFault,
                              .installationReason = *fault};
        return JobFailure{.error = ErrorTranslator::translate(error, sourceName)};
    } catch (const std::exception &error) {
        return JobFailure{.error = ErrorTranslator::translate(error, sourceName)};
    } catch (...) {
        return JobFailure{.error = {L::text(L::DamagedMessage, sourceName), std::nullopt}};
    }
}

ItemChange itemChange(const JobOutput &output, bool cancelled, const QString &sourceName,
                      const QString &destination)
{
    if (const auto *result = std::get_if<ProcessingResult>(&output)) {
        const ProcessingOutcome outcome = result->outcome;
        if (outcome == ProcessingOutcome::Skipped)
            return {.status = ProcessingStatus::skipped(
                        L::text(L::AlreadyWritten, displayedPath(destination))),
                    .result = *result};
        const bool warned =
            outcome == ProcessingOutcome::PeakLimited || outcome == ProcessingOutcome::Clipped;
        return {.status = warned ? ProcessingStatus::warning(result->warningMessage.value_or(
                                       ProcessingOutcomes::rawValue(outcome)))
                                 : ProcessingStatus::done(),
                .result = *result,
                .measuredLUFS = result->originalLUFS};
    }
    const JobFailure &failure = std::get<JobFailure>(output);
    if (failure.kind == JobFailure::Kind::InstallationFault)
        return {.status = ProcessingStatus::ready(),
                .installationFault = failure.installationReason};

    ProcessingResult record;
    record.sourceFileName = sourceName;
    record.outputFileName = fileNameOf(destination);
    if (cancelled || failure.kind == JobFailure::Kind::Cancelled) {
        record.outcome = ProcessingOutcome::Cancelled;
        return {.status = ProcessingStatus::cancelled(), .result = record};
    }
    record.outcome = ProcessingOutcome::Failed;
    return {.status = ProcessingStatus::failed(failure.error.message),
            .result = record,
            .errorDetails = failure.error.details};
}

} // namespace JobOutcome

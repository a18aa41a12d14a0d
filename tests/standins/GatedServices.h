// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/CancellationToken.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/LoudnessProcessing.h"
#include "engine/ProcessingError.h"
#include "model/StandardPath.h"

#include <QStringList>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>

// Jobs, keyed by file name, that wait for an answer (or for their token). An
// answer may be released before its job starts.
template<typename Answer>
class JobGate
{
public:
    Answer await(const QString &key, const CancellationToken &token, Answer whenCancelled) const
    {
        std::unique_lock lock(m_mutex);
        m_started.append(key);
        m_running.insert(key);
        // How the real runner notices a token: by looking at it now and then.
        while (!m_answers.contains(key) && !token.isCancelled())
            m_changed.wait_for(lock, std::chrono::milliseconds(5));
        m_running.erase(key);
        if (const auto found = m_answers.find(key); found != m_answers.end())
            return m_answers.extract(found).mapped();
        m_cancelled.append(key);
        return whenCancelled;
    }

    void release(const QStringList &keys, const Answer &answer)
    {
        const std::lock_guard lock(m_mutex);
        for (const QString &key : keys)
            m_answers[key] = answer;
        m_changed.notify_all();
    }

    QStringList started() const { return locked(m_started); }
    QStringList cancelled() const { return locked(m_cancelled); }
    // Sorted by name.
    QStringList running() const
    {
        const std::lock_guard lock(m_mutex);
        return {m_running.cbegin(), m_running.cend()};
    }

private:
    QStringList locked(const QStringList &names) const
    {
        const std::lock_guard lock(m_mutex);
        return names;
    }

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    mutable std::map<QString, Answer> m_answers;
    mutable QStringList m_started;
    mutable std::set<QString> m_running;
    mutable QStringList m_cancelled;
};

// Answers with the measurement released for a file, or fails for nullopt.
class GatedAnalyzer final : public LoudnessAnalyzing,
                            public JobGate<std::optional<LoudnessMeasurement>>
{
public:
    using Answer = std::optional<LoudnessMeasurement>;

    static Answer measures(double loudness = -20.0) { return {{loudness, -6.0, 5.0, -30.0, 0.0}}; }

    LoudnessMeasurement analyze(const QString &filePath, double, double,
                                const CancellationToken &cancellation) const override
    {
        const Answer answer = await(fileNameOf(filePath), cancellation, std::nullopt);
        if (!answer)
            throw ProcessingError::analysisFailed(QStringLiteral("no measurement"));
        return *answer;
    }
};

// Answers with what the released function returns or throws; a cancelled job
// ends the way the real service ends one. Says it is half-way as it starts.
class GatedProcessor final : public LoudnessProcessing,
                             public JobGate<std::function<ProcessingResult()>>
{
public:
    using Answer = std::function<ProcessingResult()>;

    // From -20 to -14 LUFS with +6 dB, peak -1 dBTP, written as "x.wav".
    static Answer writes(ProcessingOutcome outcome = ProcessingOutcome::Success)
    {
        return [outcome] {
            return ProcessingResult{
                .sourceFileName = QStringLiteral("x.wav"),
                .outputFileName = QStringLiteral("x.wav"),
                .originalLUFS = -20.0,
                .finalLUFS = -14.0,
                .appliedGain = 6.0,
                .truePeak = -1.0,
                .outcome = outcome,
                .warningMessage = outcome == ProcessingOutcome::PeakLimited
                                      ? std::optional(QStringLiteral("Target -20.00 \u2192 held"))
                                      : std::nullopt};
        };
    }

    template<typename Error>
    static Answer fails(Error error)
    {
        return [error]() -> ProcessingResult { throw error; };
    }

    ProcessingResult process(const AudioFileItem &item, const QString &, const OutputEncoding &,
                             const ProcessingSettings &,
                             const CancellationToken &cancellation) const override
    {
        return await(fileNameOf(item.sourcePath), cancellation,
                     fails(ProcessingError::cancelled()))();
    }

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
};

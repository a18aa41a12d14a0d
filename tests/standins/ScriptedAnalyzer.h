// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/LoudnessAnalyzing.h"

#include <QStringList>

#include <atomic>
#include <functional>

// Answers measurements from a script and counts the calls.
class ScriptedAnalyzer final : public LoudnessAnalyzing
{
public:
    using Script =
        std::function<LoudnessMeasurement(const QString &path, const CancellationToken &)>;

    explicit ScriptedAnalyzer(Script script)
        : respond(std::move(script))
    {}

    Script respond;

    LoudnessMeasurement analyze(const QString &filePath, double, double,
                                const CancellationToken &cancellation) const override
    {
        ++m_calls;
        return respond(filePath, cancellation);
    }

    int calls() const { return m_calls; }

private:
    mutable std::atomic<int> m_calls = 0;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/LoudnessProcessing.h"

#include <functional>

// Answers every job with what a script returns or throws.
class ScriptedProcessor final : public LoudnessProcessing
{
public:
    using Script =
        std::function<ProcessingResult(const AudioFileItem &, const QString &destination,
                                       const ProcessingSettings &, const CancellationToken &)>;

    explicit ScriptedProcessor(Script script)
        : m_script(std::move(script))
    {}

    ProcessingResult process(const AudioFileItem &item, const QString &destination,
                             const OutputEncoding &, const ProcessingSettings &settings,
                             const CancellationToken &cancellation) const override
    {
        return m_script(item, destination, settings, cancellation);
    }

private:
    Script m_script;
};

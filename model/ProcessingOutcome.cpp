// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ProcessingOutcome.h"

#include "model/RawValues.h"

namespace ProcessingOutcomes {

namespace {
constexpr RawValueTable<all.size()> raw{u"Success",   u"Peak limited", u"Failed",
                                        u"Cancelled", u"Clipped",      u"Skipped"};
}

QString rawValue(ProcessingOutcome outcome)
{
    return rawValueIn(raw, outcome);
}

std::optional<ProcessingOutcome> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, raw, text);
}

} // namespace ProcessingOutcomes

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/OutputFormatMode.h"

#include "model/RawValues.h"

namespace OutputFormatModes {

namespace {
constexpr RawValueTable<all.size()> raw{u"keepOriginal", u"wav", u"aiff", u"mp3", u"caf"};
}

QString rawValue(OutputFormatMode mode)
{
    return rawValueIn(raw, mode);
}

std::optional<OutputFormatMode> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, raw, text);
}

} // namespace OutputFormatModes

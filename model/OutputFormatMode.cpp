// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/OutputFormatMode.h"

#include "model/RawValues.h"

namespace OutputFormatModes {

QString rawValue(OutputFormatMode mode)
{
    switch (mode) {
    case OutputFormatMode::KeepOriginal:
        return QStringLiteral("keepOriginal");
    case OutputFormatMode::Wav:
        return QStringLiteral("wav");
    case OutputFormatMode::Aiff:
        return QStringLiteral("aiff");
    case OutputFormatMode::Mp3:
        return QStringLiteral("mp3");
    case OutputFormatMode::Caf:
        return QStringLiteral("caf");
    }
    return {};
}

std::optional<OutputFormatMode> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, text, rawValue);
}

} // namespace OutputFormatModes

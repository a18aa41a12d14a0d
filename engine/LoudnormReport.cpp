// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnormReport.h"

#include "model/NumberFormat.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <limits>

namespace {

// loudnorm prints every figure as a quoted string. A bare JSON number is not
// what it writes, so it is not accepted either.
std::optional<double> value(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue field = object.value(key);
    if (!field.isString())
        return std::nullopt;
    const QString text = field.toString();
    const QString lowered = text.toLower();
    if (lowered == u"inf")
        return std::numeric_limits<double>::infinity();
    if (lowered == u"-inf")
        return -std::numeric_limits<double>::infinity();
    return NumberFormat::parseDouble(text);
}

} // namespace

std::optional<LoudnessMeasurement> LoudnormReport::parse(const QString &ffmpegOutput)
{
    // The measurement is the last block of the log; earlier lines (metadata,
    // say) may hold braces of their own.
    const qsizetype open = ffmpegOutput.lastIndexOf(u'{');
    if (open < 0)
        return std::nullopt;
    const qsizetype close = ffmpegOutput.indexOf(u'}', open);
    if (close < 0)
        return std::nullopt;

    QJsonParseError error;
    const QJsonDocument document =
        QJsonDocument::fromJson(ffmpegOutput.mid(open, close - open + 1).toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();

    const auto inputI = value(object, QLatin1StringView("input_i"));
    const auto inputTP = value(object, QLatin1StringView("input_tp"));
    const auto inputLRA = value(object, QLatin1StringView("input_lra"));
    const auto inputThresh = value(object, QLatin1StringView("input_thresh"));
    const auto targetOffset = value(object, QLatin1StringView("target_offset"));
    if (!inputI || !inputTP || !inputLRA || !inputThresh || !targetOffset)
        return std::nullopt;
    return LoudnessMeasurement{*inputI, *inputTP, *inputLRA, *inputThresh, *targetOffset};
}

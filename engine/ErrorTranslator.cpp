// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ErrorTranslator.h"

#include "engine/ProcessingError.h"
#include "localization/L.h"

namespace ErrorTranslator {

namespace {

// The needles match ffmpeg's and the system's own (English) wording.
QString ffmpegMessage(const QString &fileName, const QString &standardError)
{
    const QString lowered = standardError.toLower();
    if (lowered.contains(QLatin1StringView("no space left")))
        return L::diskFullMessage(fileName);
    if (lowered.contains(QLatin1StringView("permission denied")))
        return L::permissionMessage(fileName);
    return L::damagedMessage(fileName);
}

QString writeMessage(const QString &fileName, const QString &reason)
{
    const QString lowered = reason.toLower();
    if (lowered.contains(QLatin1StringView("no space")) ||
        lowered.contains(QLatin1StringView("not enough space")))
        return L::diskFullMessage(fileName);
    if (lowered.contains(QLatin1StringView("permission")) ||
        lowered.contains(QLatin1StringView("denied")))
        return L::permissionMessage(fileName);
    return L::writeFailedMessage(fileName);
}

} // namespace

FriendlyError translate(const ProcessingError &error, const QString &fileName)
{
    switch (error.kind()) {
    case ProcessingError::Kind::AnalysisFailed:
        return {L::damagedMessage(fileName), error.text()};
    case ProcessingError::Kind::FFmpegFailed:
        return {ffmpegMessage(fileName, error.text()),
                QLatin1StringView("ffmpeg exit code ") + QString::number(error.code()) +
                    QLatin1StringView("\n\n") + error.text()};
    case ProcessingError::Kind::WriteFailed:
        return {writeMessage(fileName, error.text()), error.text()};
    case ProcessingError::Kind::DestinationEqualsSource:
        return {L::sameFileSkippedMessage(fileName), std::nullopt};
    case ProcessingError::Kind::Cancelled:
        return {L::cancelledMessage(), std::nullopt};
    }
    return {L::damagedMessage(fileName), std::nullopt};
}

FriendlyError translate(const std::exception &error, const QString &fileName)
{
    if (const auto *processing = dynamic_cast<const ProcessingError *>(&error))
        return translate(*processing, fileName);
    if (const auto *engine = dynamic_cast<const EngineError *>(&error))
        return {L::damagedMessage(fileName), engine->describe()};
    return {L::damagedMessage(fileName), QString::fromUtf8(error.what())};
}

} // namespace ErrorTranslator

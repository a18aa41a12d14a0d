// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ErrorTranslator.h"

#include "engine/FFmpegError.h"
#include "engine/ProcessingError.h"
#include "localization/L.h"

namespace ErrorTranslator {

namespace {

// The needles match ffmpeg's and the system's own (English) wording; the
// first that the text contains decides.
std::optional<QString> writeCause(const QString &fileName, const QString &text)
{
    const QString lowered = text.toLower();
    const auto has = [&lowered](const char *needle) {
        return lowered.contains(QLatin1StringView(needle));
    };
    if (has("no space") || has("not enough space") || has("disk quota"))
        return L::text(L::DiskFullMessage, fileName);
    if (has("read-only file system"))
        return L::text(L::ReadOnlyMessage, fileName);
    if (has("file name too long"))
        return L::text(L::PathTooLongMessage, fileName);
    if (has("permission") || has("denied") || has("operation not permitted"))
        return L::text(L::PermissionMessage, fileName);
    return std::nullopt;
}

QString ffmpegMessage(const QString &fileName, const QString &standardError)
{
    return writeCause(fileName, standardError).value_or(L::text(L::DamagedMessage, fileName));
}

QString writeMessage(const QString &fileName, const QString &reason)
{
    return writeCause(fileName, reason).value_or(L::text(L::WriteFailedMessage, fileName));
}

} // namespace

FriendlyError translate(const ProcessingError &error, const QString &fileName)
{
    switch (error.kind()) {
    case ProcessingError::Kind::AnalysisFailed:
        return {L::text(L::DamagedMessage, fileName), error.text()};
    case ProcessingError::Kind::FFmpegFailed:
        return {ffmpegMessage(fileName, error.text()),
                QLatin1StringView("ffmpeg exit code ") + QString::number(error.code()) +
                    QLatin1StringView("\n\n") + error.text()};
    case ProcessingError::Kind::WriteFailed:
        return {writeMessage(fileName, error.text()), error.text()};
    case ProcessingError::Kind::DestinationEqualsSource:
        return {L::text(L::SameFileSkippedMessage, fileName), std::nullopt};
    case ProcessingError::Kind::Cancelled:
        return {L::text(L::CancelledMessage), std::nullopt};
    case ProcessingError::Kind::SourceMissing:
        return {L::text(L::SourceMissingMessage, fileName), error.text()};
    case ProcessingError::Kind::SourceUnreadable:
        return {L::text(L::SourceUnreadableMessage, fileName), error.text()};
    }
    return {L::text(L::DamagedMessage, fileName), std::nullopt};
}

FriendlyError translate(const std::exception &error, const QString &fileName)
{
    if (const auto *processing = dynamic_cast<const ProcessingError *>(&error))
        return translate(*processing, fileName);
    if (const auto *ffmpeg = dynamic_cast<const FFmpegError *>(&error);
        ffmpeg && ffmpeg->kind() == FFmpegError::Kind::TimedOut)
        return {L::text(L::TookTooLongMessage, fileName), ffmpeg->describe()};
    if (const auto *engine = dynamic_cast<const EngineError *>(&error))
        return {L::text(L::DamagedMessage, fileName), engine->describe()};
    return {L::text(L::DamagedMessage, fileName), QString::fromUtf8(error.what())};
}

} // namespace ErrorTranslator

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/FFmpegError.h"

#include "engine/SystemError.h"

#include <cerrno>
#include <utility>

FFmpegError::FFmpegError(Kind kind, QString systemDescription)
    : m_kind(kind)
    , m_systemDescription(std::move(systemDescription))
{}

FFmpegError FFmpegError::binaryNotFound()
{
    return {Kind::BinaryNotFound, {}};
}

FFmpegError FFmpegError::launchFailed(const QString &systemDescription)
{
    return {Kind::LaunchFailed, systemDescription};
}

std::optional<QString> FFmpegError::installationFault() const
{
    switch (m_kind) {
    case Kind::BinaryNotFound:
        return systemErrorText(ENOENT);
    case Kind::LaunchFailed:
        return m_systemDescription;
    case Kind::TimedOut:
        break;
    }
    return std::nullopt;
}

FFmpegError FFmpegError::timedOut(qint64 limitSeconds)
{
    return {Kind::TimedOut, QString::number(limitSeconds)};
}

QString FFmpegError::describe() const
{
    switch (m_kind) {
    case Kind::BinaryNotFound:
        return QStringLiteral("FFmpegError.binaryNotFound");
    case Kind::LaunchFailed:
        return QStringLiteral("FFmpegError.launchFailed(\"%1\")").arg(m_systemDescription);
    case Kind::TimedOut:
        return QStringLiteral("FFmpegError.timedOut(after: %1 s)").arg(m_systemDescription);
    }
    return {};
}

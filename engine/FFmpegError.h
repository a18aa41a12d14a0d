// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/EngineError.h"

class FFmpegError final : public EngineError
{
public:
    enum class Kind
    {
        BinaryNotFound,
        LaunchFailed,
        // Stopped after the time a file of its input's size may take; the
        // description holds the limit in seconds.
        TimedOut,
    };

    static FFmpegError binaryNotFound();
    static FFmpegError launchFailed(const QString &systemDescription);
    static FFmpegError timedOut(qint64 limitSeconds);

    Kind kind() const { return m_kind; }
    // The operating system's own description of a failed launch; empty otherwise.
    const QString &systemDescription() const { return m_systemDescription; }
    // When the bundled ffmpeg itself is at fault (missing, cannot start): why,
    // in the system's words. Absent for a run that took too long, which is the
    // file's fault.
    std::optional<QString> installationFault() const;

    QString describe() const override;

    friend bool operator==(const FFmpegError &a, const FFmpegError &b)
    {
        return a.m_kind == b.m_kind && a.m_systemDescription == b.m_systemDescription;
    }

private:
    FFmpegError(Kind kind, QString systemDescription);

    Kind m_kind;
    QString m_systemDescription;
};

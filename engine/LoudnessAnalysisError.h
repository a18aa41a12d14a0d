// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/EngineError.h"

// Why a measuring pass gave no measurement. The ffmpeg cases keep its whole
// standard error so that the error's words can be chosen from it later.
class LoudnessAnalysisError final : public EngineError
{
public:
    enum class Kind
    {
        // ffmpeg exited normally but printed no complete measurement.
        ParseFailed,
        // ffmpeg exited with a non-zero status and printed no measurement.
        FFmpegFailed,
        // The path names a pipe, device or folder; ffmpeg was not started.
        NotARegularFile,
    };

    static LoudnessAnalysisError parseFailed(const QString &standardError);
    static LoudnessAnalysisError ffmpegFailed(qint32 code, const QString &standardError);
    static LoudnessAnalysisError notARegularFile(const QString &path);

    Kind kind() const { return m_kind; }
    qint32 code() const { return m_code; }
    const QString &standardError() const { return m_standardError; }

    QString describe() const override;

    friend bool operator==(const LoudnessAnalysisError &a, const LoudnessAnalysisError &b)
    {
        return a.m_kind == b.m_kind && a.m_code == b.m_code &&
               a.m_standardError == b.m_standardError;
    }

private:
    LoudnessAnalysisError(Kind kind, qint32 code, QString standardError);

    Kind m_kind;
    qint32 m_code;
    QString m_standardError;
};

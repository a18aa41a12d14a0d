// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/EngineError.h"

// Why one file was not written. Raw facts only; the words for the user are
// made from these elsewhere.
class ProcessingError final : public EngineError
{
public:
    enum class Kind
    {
        AnalysisFailed,
        FFmpegFailed,
        WriteFailed,
        DestinationEqualsSource,
        Cancelled,
        // The source is no longer where it was added.
        SourceMissing,
        // The source is there but cannot be opened; the text is the system's reason.
        SourceUnreadable,
    };

    // The measuring pass failed; the text is that error's own description.
    static ProcessingError analysisFailed(const QString &description);
    static ProcessingError ffmpegFailed(qint32 code, const QString &standardError);
    // The file system refused; the text is the system's reason.
    static ProcessingError writeFailed(const QString &reason);
    static ProcessingError destinationEqualsSource();
    static ProcessingError cancelled();
    static ProcessingError sourceMissing(const QString &path);
    static ProcessingError sourceUnreadable(const QString &reason);

    Kind kind() const { return m_kind; }
    qint32 code() const { return m_code; }
    // The description, the standard error, the reason or the path, by kind.
    const QString &text() const { return m_text; }

    QString describe() const override;

    friend bool operator==(const ProcessingError &a, const ProcessingError &b)
    {
        return a.m_kind == b.m_kind && a.m_code == b.m_code && a.m_text == b.m_text;
    }

private:
    ProcessingError(Kind kind, qint32 code, QString text);

    Kind m_kind;
    qint32 m_code;
    QString m_text;
};

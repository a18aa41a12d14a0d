// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ProcessingError.h"

#include <utility>

ProcessingError::ProcessingError(Kind kind, qint32 code, QString text)
    : m_kind(kind)
    , m_code(code)
    , m_text(std::move(text))
{}

ProcessingError ProcessingError::analysisFailed(const QString &description)
{
    return {Kind::AnalysisFailed, 0, description};
}

ProcessingError ProcessingError::ffmpegFailed(qint32 code, const QString &standardError)
{
    return {Kind::FFmpegFailed, code, standardError};
}

ProcessingError ProcessingError::writeFailed(const QString &reason)
{
    return {Kind::WriteFailed, 0, reason};
}

ProcessingError ProcessingError::destinationEqualsSource()
{
    return {Kind::DestinationEqualsSource, 0, {}};
}

ProcessingError ProcessingError::cancelled()
{
    return {Kind::Cancelled, 0, {}};
}

ProcessingError ProcessingError::sourceMissing(const QString &path)
{
    return {Kind::SourceMissing, 0, path};
}

ProcessingError ProcessingError::sourceUnreadable(const QString &reason)
{
    return {Kind::SourceUnreadable, 0, reason};
}

QString ProcessingError::describe() const
{
    switch (m_kind) {
    case Kind::AnalysisFailed:
        return QStringLiteral("ProcessingError.analysisFailed(\"%1\")").arg(m_text);
    case Kind::FFmpegFailed:
        return QStringLiteral("ProcessingError.ffmpegFailed(code: %1, stderr: \"%2\")")
            .arg(m_code)
            .arg(m_text);
    case Kind::WriteFailed:
        return QStringLiteral("ProcessingError.writeFailed(\"%1\")").arg(m_text);
    case Kind::DestinationEqualsSource:
        return QStringLiteral("ProcessingError.destinationEqualsSource");
    case Kind::Cancelled:
        return QStringLiteral("ProcessingError.cancelled");
    case Kind::SourceMissing:
        return QStringLiteral("ProcessingError.sourceMissing(\"%1\")").arg(m_text);
    case Kind::SourceUnreadable:
        return QStringLiteral("ProcessingError.sourceUnreadable(\"%1\")").arg(m_text);
    }
    return {};
}

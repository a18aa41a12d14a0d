// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LoudnessAnalysisError.h"

#include <utility>

LoudnessAnalysisError::LoudnessAnalysisError(Kind kind, qint32 code, QString standardError)
    : m_kind(kind)
    , m_code(code)
    , m_standardError(std::move(standardError))
{}

LoudnessAnalysisError LoudnessAnalysisError::parseFailed(const QString &standardError)
{
    return {Kind::ParseFailed, 0, standardError};
}

LoudnessAnalysisError LoudnessAnalysisError::ffmpegFailed(qint32 code, const QString &standardError)
{
    return {Kind::FFmpegFailed, code, standardError};
}

LoudnessAnalysisError LoudnessAnalysisError::notARegularFile(const QString &path)
{
    return {Kind::NotARegularFile, 0, path};
}

QString LoudnessAnalysisError::describe() const
{
    switch (m_kind) {
    case Kind::ParseFailed:
        return QStringLiteral("LoudnessAnalysisError.parseFailed(\"%1\")").arg(m_standardError);
    case Kind::FFmpegFailed:
        return QStringLiteral("LoudnessAnalysisError.ffmpegFailed(code: %1, stderr: \"%2\")")
            .arg(m_code)
            .arg(m_standardError);
    case Kind::NotARegularFile:
        return QStringLiteral("LoudnessAnalysisError.notARegularFile(path: \"%1\")")
            .arg(m_standardError);
    }
    return {};
}

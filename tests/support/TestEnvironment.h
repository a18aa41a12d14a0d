// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QList>
#include <QString>
#include <QTest>

#include <clocale>

namespace TestEnvironment {

// Where the build tree keeps bin/, lib/tonbrook/ and share/tonbrook/.
inline QString buildBinDirectory()
{
    return QStringLiteral(TONBROOK_BUILD_BIN_DIR);
}

inline QString ffmpegPath()
{
    return QDir::cleanPath(buildBinDirectory() + QStringLiteral("/../lib/tonbrook/ffmpeg"));
}

// The locale runs of a test set TONBROOK_EXPECT_COMMA_DECIMAL; there the C
// library must really be writing "," or the run would prove nothing.
inline bool commaLocaleActiveAsRequested()
{
    if (qEnvironmentVariableIntValue("TONBROOK_EXPECT_COMMA_DECIMAL") != 1)
        return true;
    const lconv *conventions = std::localeconv();
    return conventions && QByteArray(conventions->decimal_point) == ",";
}

// Process ids of this process's live or unreaped children.
inline QList<qint64> childProcessIds()
{
    QList<qint64> ids;
    const QStringList tasks =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &task : tasks) {
        QFile children(QStringLiteral("/proc/self/task/%1/children").arg(task));
        if (!children.open(QIODevice::ReadOnly))
            continue;
        const QList<QByteArray> parts = children.readAll().simplified().split(' ');
        for (const QByteArray &part : parts)
            if (!part.isEmpty())
                ids.append(part.toLongLong());
    }
    return ids;
}

} // namespace TestEnvironment

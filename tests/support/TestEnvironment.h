// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QList>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QTest>

#include <clocale>
#include <unistd.h>

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

// Runs one function of the current test executable again as an unprivileged
// user (root reads and writes through any permission bits, so mode 000 proves
// nothing to it). Returns the child's exit status; -1 when it cannot be done.
// As a normal user the function simply runs in a child of the same user.
inline int runUnprivileged(const char *testFunction, const QString &variable, const QString &value)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(variable, value);
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    const QString self = QCoreApplication::applicationFilePath();
    if (::geteuid() == 0) {
        const QString setpriv = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
        if (setpriv.isEmpty())
            return -1;
        child.start(setpriv,
                    {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                     QStringLiteral("--clear-groups"), self, QString::fromLatin1(testFunction)});
    } else {
        child.start(self, {QString::fromLatin1(testFunction)});
    }
    if (!child.waitForFinished(60000))
        return -1;
    return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : -1;
}

// Lets another user walk into a test's temporary folder (they are made 0700).
inline void openToEveryone(const QString &folder)
{
    QFile::setPermissions(folder, QFile::permissions(folder) | QFile::ReadOther | QFile::ExeOther |
                                      QFile::ReadGroup | QFile::ExeGroup);
}

} // namespace TestEnvironment

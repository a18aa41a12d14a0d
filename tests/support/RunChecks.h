// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TestEnvironment.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFileInfo>
#include <QMap>
#include <QProcess>

// What every run must leave behind, whatever happened during it: sources as
// they were, no hidden part files, no ffmpeg still running, no unreaped child.
namespace RunChecks {

struct CliRun
{
    bool finished = false; // false: killed by the watchdog, or crashed
    int status = -1;
    QByteArray out;
    QString err;
};

inline QString cliPath()
{
    return TestEnvironment::buildBinDirectory() + QStringLiteral("/tonbrook-cli");
}

// Runs the command line front end; a run that outlives the bound is killed.
// Unprivileged, a root test runs it as nobody, for whom permission bits count.
inline CliRun runCli(const QStringList &arguments, int boundMs = 120000,
                     const QString &program = cliPath(), bool unprivileged = false)
{
    QProcess process;
    if (unprivileged && ::geteuid() == 0)
        process.start(QStandardPaths::findExecutable(QStringLiteral("setpriv")),
                      QStringList{QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                                  QStringLiteral("--clear-groups"), program} +
                          arguments);
    else
        process.start(program, arguments);
    const bool ended = process.waitForFinished(boundMs);
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    return {ended && process.exitStatus() == QProcess::NormalExit, process.exitCode(),
            process.readAllStandardOutput(), QString::fromUtf8(process.readAllStandardError())};
}

inline QByteArray digest(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&file);
    return hash.result();
}

// Every file below the root, hidden ones included, relative and sorted.
inline QStringList filesBelow(const QString &root)
{
    QStringList found;
    QDirIterator it(root, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext())
        found.append(it.next().mid(root.size() + 1));
    found.sort();
    return found;
}

// Digests of the regular files below the root, by absolute path.
inline QMap<QString, QByteArray> snapshot(const QString &root)
{
    QMap<QString, QByteArray> digests;
    for (const QString &file : filesBelow(root)) {
        const QString path = root + u'/' + file;
        if (QFileInfo(path).isFile() && !QFileInfo(path).isSymLink())
            digests.insert(path, digest(path));
    }
    return digests;
}

// Paths whose content differs from the snapshot (or that are gone).
inline QStringList changedSince(const QMap<QString, QByteArray> &before)
{
    QStringList changed;
    for (auto it = before.cbegin(); it != before.cend(); ++it)
        if (digest(it.key()) != it.value())
            changed.append(it.key());
    return changed;
}

inline QStringList partFilesBelow(const QString &root)
{
    return filesBelow(root).filter(QStringLiteral(".tbpart-"));
}

// The bundled ffmpeg's processes whose command line names the given text
// (a test's own folder), so tests running side by side do not count.
inline int ffmpegProcessesMentioning(const QString &text)
{
    int count = 0;
    const QString ffmpeg = QFileInfo(TestEnvironment::ffmpegPath()).canonicalFilePath();
    const QStringList pids = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &pid : pids) {
        if (QFileInfo(QStringLiteral("/proc/%1/exe").arg(pid)).canonicalFilePath() != ffmpeg)
            continue;
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
        if (cmdline.open(QIODevice::ReadOnly) && cmdline.readAll().contains(text.toUtf8()))
            ++count;
    }
    return count;
}

// This process's children that have exited and were never reaped.
inline int zombieChildren()
{
    int zombies = 0;
    for (const qint64 pid : TestEnvironment::childProcessIds()) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
        if (!stat.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = stat.readAll();
        const qsizetype close = text.lastIndexOf(')');
        if (close > 0 && text.mid(close + 2, 1) == "Z")
            ++zombies;
    }
    return zombies;
}

} // namespace RunChecks

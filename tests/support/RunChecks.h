// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TestAudio.h"
#include "TestEnvironment.h"
#include "model/StandardPath.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <memory>

// What every run must leave behind, whatever happened during it: sources as
// they were, no hidden part files, no ffmpeg still running, no unreaped child;
// and what a run reports, checked against what is on disk.
namespace RunChecks {

struct CliRun
{
    bool finished = false; // false: killed by the bound, or crashed
    int status = -1;
    QByteArray out;
    QString err;
};

inline QString cliPath()
{
    return TestEnvironment::buildBinDirectory() + QStringLiteral("/tonbrook-cli");
}

// Starts the command line front end; unprivileged, a root test runs it as
// nobody, for whom permission bits count.
inline std::unique_ptr<QProcess> startCli(const QStringList &arguments,
                                          const QString &program = cliPath(),
                                          bool unprivileged = false)
{
    auto process = std::make_unique<QProcess>();
    if (unprivileged && ::geteuid() == 0)
        process->start(QStandardPaths::findExecutable(QStringLiteral("setpriv")),
                       QStringList{QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                                   QStringLiteral("--clear-groups"), program} +
                           arguments);
    else
        process->start(program, arguments);
    process->waitForStarted();
    return process;
}

// Waits for a started run; one that outlives the bound is killed.
inline CliRun finishCli(QProcess &process, int boundMs = 120000)
{
    const bool ended = process.waitForFinished(boundMs);
    if (!ended)
        process.kill();
    process.waitForFinished();
    return {ended && process.exitStatus() == QProcess::NormalExit, process.exitCode(),
            process.readAllStandardOutput(), QString::fromUtf8(process.readAllStandardError())};
}

inline CliRun runCli(const QStringList &arguments, int boundMs = 120000,
                     const QString &program = cliPath(), bool unprivileged = false)
{
    return finishCli(*startCli(arguments, program, unprivileged), boundMs);
}

// A take of the signal in the container the extension names.
inline bool writeAudio(const QString &path, const std::vector<TestAudio::Segment> &signal,
                       int rate = 48000, int channels = 2)
{
    QDir().mkpath(QFileInfo(path).path());
    const bool wav = path.endsWith(QStringLiteral(".wav"));
    const QString source = wav ? path : path + QStringLiteral(".tmp.wav");
    if (!TestAudio::writeWav(source, rate, channels, signal))
        return false;
    if (wav)
        return true;
    const QString problem = TestAudio::encode(TestEnvironment::ffmpegPath(), source, path);
    QFile::remove(source);
    return problem.isEmpty();
}

// A file's bytes; "<missing>" when there is none to read, so that a
// comparison names what went wrong.
inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// Writes the bytes whole, making the folders on the way.
inline bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(bytes) == bytes.size();
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
// (a test's own folder), so tests running side by side do not count; each
// is sent the signal, if one is given.
inline int ffmpegProcessesMentioning(const QString &text, int signal = 0)
{
    int count = 0;
    const QString ffmpeg = QFileInfo(TestEnvironment::ffmpegPath()).canonicalFilePath();
    for (const QString &pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
        if (QFileInfo(QStringLiteral("/proc/%1/exe").arg(pid)).canonicalFilePath() == ffmpeg &&
            cmdline.open(QIODevice::ReadOnly) && cmdline.readAll().contains(text.toUtf8()) &&
            (signal == 0 || ::kill(pid.toInt(), signal) == 0))
            ++count;
    }
    return count;
}

// The lines of a --json run, by the value of one of their fields.
inline QMap<QString, QJsonObject> printedBy(const QByteArray &json, const QString &field)
{
    QMap<QString, QJsonObject> printed;
    for (const QByteArray &line : json.split('\n'))
        if (!line.trimmed().isEmpty()) {
            const QJsonObject entry = QJsonDocument::fromJson(line).object();
            printed.insert(entry.value(field).toString(), entry);
        }
    return printed;
}

// Below its header, the report of a --json run has one row per result printed, with its
// names, figures and outcome, as Python's csv module (no code shared with the writer) reads it;
// every output printed is on disk under its result's name.
inline void checkReport(const QString &report, const QMap<QString, QJsonObject> &printed)
{
    QProcess reader;
    reader.start(QStringLiteral("python3"),
                 {QStringLiteral(TONBROOK_TEST_SOURCE_DIR "/files/read_csv.py"), report});
    QVERIFY(reader.waitForFinished(30000) && reader.exitCode() == 0);
    QVariantList rows =
        QJsonDocument::fromJson(reader.readAllStandardOutput())[u"rows"].toArray().toVariantList();
    QVERIFY2(!rows.isEmpty(), qPrintable(report));
    rows.removeFirst();
    for (const QJsonObject &entry : printed) {
        const QJsonObject result = entry[u"result"].toObject();
        const QString output = entry[u"output"].toString();
        const QString outputName = result[u"outputFileName"].toString();
        QVERIFY2(output.isEmpty() || (::access(encodedPath(output).constData(), F_OK) == 0 &&
                                      fileNameOf(output) == outputName),
                 qPrintable(output));
        const auto same = [&](const QVariant &cells) {
            const QStringList row = cells.toStringList();
            if (row.size() != 7 || row[6] != result[u"outcome"].toString() ||
                row[0] != displayedPath(result[u"sourceFileName"].toString()) ||
                row[1] != displayedPath(outputName))
                return false;
            int column = 2;
            for (const char *key : {"originalLUFS", "finalLUFS", "appliedGain", "truePeak"}) {
                const QJsonValue value = result[QLatin1StringView(key)];
                const QString &field = row[column++];
                if (value.isNull() ? !field.isEmpty()
                                   : std::abs(field.toDouble() - value.toDouble()) > 0.051)
                    return false;
            }
            return true;
        };
        if (!result.isEmpty()) {
            const auto found = std::find_if(rows.begin(), rows.end(), same);
            QVERIFY2(found != rows.end(), QJsonDocument(entry).toJson().constData());
            rows.erase(found);
        }
    }
    QCOMPARE(rows, QVariantList());
}

} // namespace RunChecks

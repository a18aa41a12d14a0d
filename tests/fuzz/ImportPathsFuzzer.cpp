// SPDX-License-Identifier: GPL-3.0-or-later
//
// Any list of paths dropped on the window, inside a tree with hidden files,
// packages, links, a loop and a pipe: import never crashes or hangs, and what
// it takes is each supported regular file at most once, with a relative path
// that stays below what was dropped.
#include "files/FileImportService.h"
#include "files/FolderScanner.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>
#include <sys/stat.h>

namespace {

QTemporaryDir *sandbox = nullptr;

void touch(const QString &relative)
{
    const QString path = sandbox->filePath(relative);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    file.open(QIODevice::WriteOnly);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    sandbox = new QTemporaryDir;
    for (const char *name :
         {"a.wav", "B.MP3", "c.txt", ".hidden.wav", "Reel 1/take 1.aiff", "Reel 1/take 2.aif",
          "Reel 1/.cache/x.wav", "Reel 1/Sub/deep.m4a", "Reel 2/Session.bundle/inner.wav",
          "Reel 2/caf.caf", "Кириллица/звук.wav", "weird/-dash.wav", "weird/100%.wav",
          "weird/two\nlines.wav"})
        touch(QString::fromUtf8(name));
    QFile::link(sandbox->filePath(QStringLiteral("Reel 1")),
                sandbox->filePath(QStringLiteral("Reel 1/Sub/loop")));
    QFile::link(sandbox->filePath(QStringLiteral("gone.wav")),
                sandbox->filePath(QStringLiteral("dangling.wav")));
    ::mkfifo(QFile::encodeName(sandbox->filePath(QStringLiteral("pipe.wav"))).constData(), 0644);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // One path per line, kept inside the sandbox (".." may not climb out of it).
    QStringList paths;
    const QStringList lines =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size))
            .split(u'\n');
    for (const QString &line : lines) {
        if (line.split(u'/').contains(QStringLiteral("..")))
            continue;
        paths.append(line.isEmpty() ? QString() : sandbox->path() + u'/' + line);
    }
    const FileImportService service(std::make_shared<FolderScanner>());
    const ImportSummary summary = service.importPaths(paths, {});
    QSet<QString> seen;
    for (const AudioFileItem &item : summary.items) {
        const QFileInfo file(item.sourcePath);
        if (!file.isFile() || file.isSymLink() || seen.contains(item.sourcePath) ||
            !item.sourcePath.startsWith(sandbox->path() + u'/') ||
            item.relativePath.startsWith(u'/') ||
            item.relativePath.contains(QStringLiteral("..")) ||
            !item.sourcePath.endsWith(item.relativePath))
            std::abort();
        seen.insert(item.sourcePath);
    }
    if (summary.unsupportedCount < 0 || summary.duplicateCount < 0)
        std::abort();
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/FileImportService.h"

#include "files/FolderScanning.h"
#include "model/StandardPath.h"

#include <QSet>

#include <sys/stat.h>
#include <utility>

namespace {

AudioFileItem newItem(const QString &path, const QString &relativePath, SourceAudioFormat format)
{
    return {.id = QUuid::createUuid(),
            .sourcePath = path,
            .relativePath = relativePath,
            .sourceFormat = format};
}

QString lastComponent(const QString &path)
{
    return fileNameOf(standardizedPath(path));
}

} // namespace

FileImportService::FileImportService(std::shared_ptr<const FolderScanning> folderScanner)
    : m_folderScanner(std::move(folderScanner))
{}

ImportSummary FileImportService::importPaths(const QStringList &paths,
                                             const QList<AudioFileItem> &existing) const
{
    ImportSummary summary;
    QSet<QString> keys;
    keys.reserve(existing.size() + paths.size());
    for (const AudioFileItem &item : existing)
        keys.insert(standardizedPath(item.sourcePath));

    // The same file given twice (alone and inside a dropped folder, say)
    // becomes one item: the key set grows as items are added.
    const auto unsupported = [&summary](const QString &name) {
        ++summary.unsupportedCount;
        const qsizetype dot = name.lastIndexOf(u'.');
        ++summary.unsupportedFormats[dot > 0 ? name.mid(dot + 1).toLower() : QString()];
    };
    const auto take = [&](const QString &path, const QString &relativePath) {
        const auto format = SourceAudioFormats::fromFileName(lastComponent(path));
        if (!format) {
            unsupported(lastComponent(path));
            return;
        }
        const QString key = standardizedPath(path);
        if (keys.contains(key)) {
            ++summary.duplicateCount;
            return;
        }
        keys.insert(key);
        summary.items.append(newItem(path, relativePath, *format));
    };

    for (const QString &path : paths) {
        struct stat info
        {};
        if (path.isEmpty() || ::stat(encodedPath(path).constData(), &info) != 0) {
            unsupported(QString());
        } else if (S_ISDIR(info.st_mode)) {
            QMap<QString, int> skipped;
            const QList<ScannedAudioFile> scanned = m_folderScanner->scanFolder(path, &skipped);
            for (auto format = skipped.cbegin(); format != skipped.cend(); ++format) {
                summary.unsupportedCount += format.value();
                summary.unsupportedFormats[format.key()] += format.value();
            }
            summary.items.reserve(summary.items.size() + scanned.size());
            for (const ScannedAudioFile &file : scanned)
                take(file.url, file.relativePath);
        } else if (S_ISREG(info.st_mode)) {
            take(path, lastComponent(path));
        } else {
            // A pipe, socket or device named like audio would block the
            // reader that opens it: it is no audio file.
            unsupported(QString());
        }
    }
    return summary;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/FolderScanner.h"

#include "model/NaturalOrder.h"
#include "model/SourceAudioFormat.h"
#include "model/StandardPath.h"

#include <QCollator>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <vector>

namespace {

struct Found
{
    QByteArray relativePath; // file-system bytes, "/"-joined
};

// What a walk finds: supported audio, and other audio counted by extension.
struct Walk
{
    std::vector<Found> found;
    QMap<QString, int> *skipped = nullptr;
};

// Extension check on raw bytes first: most names in a big tree are not audio,
// and a QString is made only for those that are.
bool hasAudioExtension(const char *name)
{
    const char *dot = std::strrchr(name, '.');
    if (!dot || dot[1] == '\0' || std::strlen(dot + 1) > 4)
        return false;
    return SourceAudioFormats::fromFileName(decodedPath(name)).has_value();
}

unsigned char entryType(int directoryFd, const dirent *entry)
{
    if (entry->d_type != DT_UNKNOWN)
        return entry->d_type;
    struct stat info
    {};
    if (::fstatat(directoryFd, entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0)
        return DT_UNKNOWN;
    if (S_ISREG(info.st_mode))
        return DT_REG;
    if (S_ISDIR(info.st_mode))
        return DT_DIR;
    if (S_ISLNK(info.st_mode))
        return DT_LNK;
    return DT_UNKNOWN;
}

// Depth-first; entries of one folder in byte order, so that names the sort
// treats as equal ("a.wav", "A.wav") come out the same way on every file
// system. A folder is closed before its sub-folders are opened, so depth
// costs no file descriptors.
void walk(const QByteArray &path, const QByteArray &prefix, Walk &walked)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return;
    DIR *directory = ::fdopendir(fd);
    if (!directory) {
        ::close(fd);
        return;
    }
    std::vector<std::pair<QByteArray, unsigned char>> entries;
    while (const dirent *entry = ::readdir(directory)) {
        if (entry->d_name[0] == '.')
            continue; // hidden, and "." and ".."
        entries.emplace_back(QByteArray(entry->d_name), entryType(fd, entry));
    }
    ::closedir(directory);
    std::sort(entries.begin(), entries.end());

    for (const auto &[name, type] : entries) {
        const QByteArray relative = prefix.isEmpty() ? name : prefix + '/' + name;
        if (type == DT_REG) {
            if (hasAudioExtension(name.constData()))
                walked.found.push_back({relative});
            else if (walked.skipped)
                if (const auto other = SourceAudioFormats::otherAudioExtension(decodedPath(name)))
                    ++(*walked.skipped)[*other];
        } else if (type == DT_DIR && !FolderScanner::isPackageName(decodedPath(name))) {
            walk(path.endsWith('/') ? QByteArray(path + name) : QByteArray(path + '/' + name),
                 relative, walked);
        }
    }
}

} // namespace

bool FolderScanner::isPackageName(QStringView name)
{
    static const QStringList packages{
        QStringLiteral("app"),    QStringLiteral("bundle"),    QStringLiteral("framework"),
        QStringLiteral("plugin"), QStringLiteral("component"), QStringLiteral("kext"),
        QStringLiteral("logicx"), QStringLiteral("band"),      QStringLiteral("vst"),
        QStringLiteral("vst3"),   QStringLiteral("aaxplugin"), QStringLiteral("rtfd"),
        QStringLiteral("pkg"),    QStringLiteral("mpkg")};
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && packages.contains(name.mid(dot + 1).toString().toLower());
}

QList<ScannedAudioFile> FolderScanner::scanFolder(const QString &folder,
                                                  QMap<QString, int> *skipped) const
{
    const QString root = standardizedPath(folder);
    if (root.isEmpty())
        return {};
    Walk walked{.skipped = skipped};
    std::vector<Found> &found = walked.found;
    // The folder itself may be a link the user chose to give; what lies below is not followed.
    QByteArray rootPath = encodedPath(root);
    if (char *real = ::realpath(rootPath.constData(), nullptr)) {
        rootPath = real;
        std::free(real);
    } else {
        rootPath.clear();
    }
    if (rootPath.isEmpty())
        return {};
    walk(rootPath, {}, walked);

    QList<ScannedAudioFile> files;
    files.reserve(static_cast<qsizetype>(found.size()));
    const QString base = root.endsWith(u'/') ? root : root + u'/';
    for (const Found &entry : found) {
        const QString relative = decodedPath(entry.relativePath);
        files.append({base + relative, relative});
    }

    // The order a file manager shows.
    const QCollator collator = naturalOrder();
    std::vector<QCollatorSortKey> keys;
    keys.reserve(found.size());
    for (const ScannedAudioFile &file : std::as_const(files))
        keys.push_back(collator.sortKey(file.relativePath));
    std::vector<qsizetype> order(found.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = static_cast<qsizetype>(i);
    std::stable_sort(order.begin(), order.end(),
                     [&keys](qsizetype a, qsizetype b) { return keys[a].compare(keys[b]) < 0; });

    QList<ScannedAudioFile> sorted;
    sorted.reserve(files.size());
    for (qsizetype index : order)
        sorted.append(std::move(files[index]));
    return sorted;
}

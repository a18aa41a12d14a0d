// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/OutputPathService.h"

#include "model/StandardPath.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <unistd.h>

namespace {

QString withSlash(const QString &path)
{
    return path.endsWith(u'/') ? path : path + u'/';
}

bool writable(const QString &path)
{
    return ::access(encodedPath(path).constData(), W_OK) == 0;
}

} // namespace

bool OutputPathService::isInsideSourceTree(const QString &root,
                                           const QStringList &sourcePaths) const
{
    const QString rootSlash = withSlash(root);
    // A big queue has few distinct folders; each is compared once.
    QSet<QString> seen;
    for (const QString &source : sourcePaths) {
        const QString clean = standardizedPath(source);
        const QString folder = clean.left(std::max<qsizetype>(clean.lastIndexOf(u'/'), 1));
        if (seen.contains(folder))
            continue;
        seen.insert(folder);
        if (root == folder || root.startsWith(withSlash(folder)) || folder.startsWith(rootSlash))
            return true;
    }
    return false;
}

bool OutputPathService::isWritable(const QString &path) const
{
    const QFileInfo info(path);
    if (info.isDir())
        return writable(path);
    return writable(info.absolutePath());
}

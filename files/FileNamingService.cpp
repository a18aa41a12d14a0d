// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/FileNamingService.h"

#include "model/StandardPath.h"

#include <QFile>

#include <sys/stat.h>

namespace FileNamingService {

bool isTaken(const QString &path, const QSet<QString> &reserved)
{
    if (reserved.contains(standardizedPath(path)))
        return true;
    // Any entry counts, a dangling link included: the final rename would replace it.
    struct stat info
    {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0;
}

QString uniqueURL(const QString &wanted, const QSet<QString> &reserved)
{
    if (!isTaken(wanted, reserved))
        return wanted;
    const qsizetype slash = wanted.lastIndexOf(u'/');
    const QString folder = wanted.left(slash + 1);
    const QString name = wanted.mid(slash + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    const bool hasExtension = dot > 0 && dot < name.size() - 1;
    const QString base = hasExtension ? name.left(dot) : name;
    const QString extension = hasExtension ? name.mid(dot) : QString();
    for (qint64 n = 2;; ++n) {
        const QString candidate = folder + base + u' ' + QString::number(n) + extension;
        if (!isTaken(candidate, reserved))
            return candidate;
    }
}

} // namespace FileNamingService

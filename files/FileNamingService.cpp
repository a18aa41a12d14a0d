// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/FileNamingService.h"

#include "model/StandardPath.h"

#include <sys/stat.h>

namespace FileNamingService {

bool isTaken(const QString &path, const QSet<QString> &reserved)
{
    if (reserved.contains(standardizedPath(path)))
        return true;
    // Any entry counts, a dangling link included: the final rename would replace it.
    struct stat info
    {};
    return ::lstat(encodedPath(path).constData(), &info) == 0;
}

QString uniquePath(const QString &wanted, const QSet<QString> &reserved)
{
    if (!isTaken(wanted, reserved))
        return wanted;
    for (qint64 n = 2;; ++n) {
        const QString candidate = numberedPath(wanted, n);
        if (!isTaken(candidate, reserved))
            return candidate;
    }
}

QString unreservedPath(const QString &wanted, const QSet<QString> &reserved)
{
    if (!reserved.contains(standardizedPath(wanted)))
        return wanted;
    for (qint64 n = 2;; ++n) {
        const QString candidate = numberedPath(wanted, n);
        if (!reserved.contains(standardizedPath(candidate)))
            return candidate;
    }
}

} // namespace FileNamingService

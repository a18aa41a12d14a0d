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

namespace {

// The wanted name, else the first of "name 2", "name 3", … that is free.
template<typename Taken>
QString firstFree(const QString &wanted, Taken taken)
{
    if (!taken(wanted))
        return wanted;
    for (qint64 n = 2;; ++n) {
        const QString candidate = numberedPath(wanted, n);
        if (!taken(candidate))
            return candidate;
    }
}

} // namespace

QString uniquePath(const QString &wanted, const QSet<QString> &reserved)
{
    return firstFree(wanted, [&](const QString &path) { return isTaken(path, reserved); });
}

QString unreservedPath(const QString &wanted, const QSet<QString> &reserved)
{
    return firstFree(
        wanted, [&](const QString &path) { return reserved.contains(standardizedPath(path)); });
}

} // namespace FileNamingService

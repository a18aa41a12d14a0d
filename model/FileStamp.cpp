// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/FileStamp.h"

#include "model/StandardPath.h"

#include <sys/stat.h>

std::optional<FileStamp> FileStamp::of(const QString &path)
{
    struct stat info
    {};
    if (::stat(encodedPath(path).constData(), &info) != 0)
        return std::nullopt;
    return FileStamp{static_cast<qint64>(info.st_size),
                     static_cast<qint64>(info.st_mtim.tv_sec) * 1'000'000'000 +
                         info.st_mtim.tv_nsec,
                     static_cast<quint64>(info.st_ino)};
}

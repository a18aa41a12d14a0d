// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

// What a file looked like at one moment: enough to tell that it was replaced
// or rewritten since (an editor saving in place keeps the inode but not the
// size or the modification time; a save-by-rename changes the inode).
struct FileStamp
{
    qint64 size = 0;
    qint64 modifiedNanoseconds = 0;
    quint64 inode = 0;

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// A file's identity: its absolute path with "." and ".." taken out and no
// trailing slash. Symbolic links are not resolved, and comparison is exact.
QString standardizedPath(const QString &path);

// The last component of a path: a file's name with its extension.
QString fileNameOf(const QString &path);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// A file's identity: its absolute path with "." and ".." taken out and no
// trailing slash. Symbolic links are not resolved, and comparison is exact.
QString standardizedPath(const QString &path);

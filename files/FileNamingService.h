// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QString>

// Finds a free name for an output file: the wanted one, or the first of
// "Name 2.ext", "Name 3.ext", ... that is neither on disk nor promised to an
// earlier file of the same run.
namespace FileNamingService {

// `reserved` holds the standardized paths already promised in this run.
QString uniquePath(const QString &wanted, const QSet<QString> &reserved);
// The name a file gets in an empty folder: numbered only past the names
// promised to earlier files of the run, whatever is on disk.
QString unreservedPath(const QString &wanted, const QSet<QString> &reserved);
bool isTaken(const QString &path, const QSet<QString> &reserved);

} // namespace FileNamingService

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

// A file's identity: its absolute path with "." and ".." taken out and no
// trailing slash. Symbolic links are not resolved, and comparison is exact.
QString standardizedPath(const QString &path);

// The last component of a path: a file's name with its extension.
QString fileNameOf(const QString &path);

// "take.wav" -> "take 2.wav" for n = 2: the name a path takes when its own is in use.
QString numberedPath(const QString &path, qint64 n);

// File names are bytes, and not every byte string is UTF-8. Paths travel as
// QString with each byte that is not part of valid UTF-8 kept as one of the
// lone surrogates U+DC80..U+DCFF, so that the file system gets back exactly
// the bytes it gave; every call into the system encodes with encodedPath.
QByteArray encodedPath(const QString &path);
QString decodedPath(const QByteArray &bytes);
// The same path for a person to read: kept bytes become U+FFFD.
QString displayedPath(const QString &path);
// A file URL's path with its bytes kept (QUrl::toLocalFile would replace them).
QString localPathOf(const QUrl &url);

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/StandardPath.h"

#include <QDir>

QString standardizedPath(const QString &path)
{
    if (path.isEmpty())
        return {};
    return QDir::cleanPath(QDir::isAbsolutePath(path) ? path
                                                      : QDir::current().absoluteFilePath(path));
}

QString fileNameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

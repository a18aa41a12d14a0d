// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

// The two questions asked about an output folder whenever it or the queue changes.
class OutputPathResolving
{
public:
    virtual ~OutputPathResolving() = default;

    // Whether the folder `root` and the folder of any source are the same or
    // one lies inside the other (path strings, exact, links not resolved).
    virtual bool isInsideSourceTree(const QString &root, const QStringList &sourcePaths) const = 0;
    // A folder that exists: can it be written? Anything else: can its parent?
    virtual bool isWritable(const QString &path) const = 0;
};

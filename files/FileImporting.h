// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/ImportSummary.h"

#include <QStringList>

class FileImporting
{
public:
    virtual ~FileImporting() = default;

    // Turns dropped or chosen paths (files and folders, in the order given)
    // into new queue items, skipping unsupported entries and files already in
    // `existing` or earlier in the same import. Never fails.
    virtual ImportSummary importPaths(const QStringList &paths,
                                      const QList<AudioFileItem> &existing) const = 0;
};

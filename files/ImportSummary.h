// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AudioFileItem.h"

#include <QList>
#include <QMap>

// What one import brought: the new items, and how many entries were passed
// over because they are not supported audio files (or do not exist), or are
// already queued.
struct ImportSummary
{
    QList<AudioFileItem> items;
    int unsupportedCount = 0;
    // The unsupported entries by extension, lower-case ("flac": 3); those
    // without an extension (and what is no file at all) under "".
    QMap<QString, int> unsupportedFormats;
    int duplicateCount = 0;
};

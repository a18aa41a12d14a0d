// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AudioFileItem.h"

#include <QList>

// What one import brought: the new items, and how many entries were passed
// over because they are not supported audio files (or do not exist), or are
// already queued.
struct ImportSummary
{
    QList<AudioFileItem> items;
    int unsupportedCount = 0;
    int duplicateCount = 0;
};

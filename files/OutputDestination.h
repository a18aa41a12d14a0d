// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/OutputEncoding.h"
#include "model/AudioFileItem.h"
#include "model/ProcessingSettings.h"

#include <QSet>
#include <QString>

// Where one item of a run is written: below the output folder, in the item's
// own sub-folder (so a dropped folder's structure is repeated), under its own
// base name with the output's extension and the optional prefix, made unique
// against the disk and against the earlier items of the run.
struct OutputDestination
{
    OutputEncoding encoding;
    QString path;

    // Adds the chosen path to `reserved`.
    static OutputDestination forItem(const AudioFileItem &item, const ProcessingSettings &settings,
                                     const QString &outputFolder, QSet<QString> &reserved);
};

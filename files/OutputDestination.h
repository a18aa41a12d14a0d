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
//
// With `skipExisting`, an item whose file is already there under the name it
// would get in an empty folder (a finished earlier run's, not a hidden part
// file) keeps that file: its destination is that path, marked existing.
struct OutputDestination
{
    OutputEncoding encoding;
    QString path;
    // The file at `path` is already written: nothing is to be done.
    bool existing = false;

    // Adds the chosen path to `reserved`.
    static OutputDestination forItem(const AudioFileItem &item, const ProcessingSettings &settings,
                                     const QString &outputFolder, QSet<QString> &reserved);
};

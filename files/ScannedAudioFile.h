// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// An audio file found below a scanned folder.
struct ScannedAudioFile
{
    // Absolute path as the walk reached it (below the folder's standardized path).
    QString url;
    // Path below the scanned folder, components joined by "/".
    QString relativePath;

    friend bool operator==(const ScannedAudioFile &, const ScannedAudioFile &) = default;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/ScannedAudioFile.h"

#include <QList>
#include <QMap>

class FolderScanning
{
public:
    virtual ~FolderScanning() = default;

    // Every supported audio file below the folder, in the user's standard
    // order of their relative paths. Never fails: what cannot be read is left out.
    // Audio in a format Tonbrook does not read ("flac", "ogg") is counted by
    // extension into `skipped` when given; other files are simply not audio.
    virtual QList<ScannedAudioFile> scanFolder(const QString &folder,
                                               QMap<QString, int> *skipped = nullptr) const = 0;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/ScannedAudioFile.h"

#include <QList>

class FolderScanning
{
public:
    virtual ~FolderScanning() = default;

    // Every supported audio file below the folder, in the user's standard
    // order of their relative paths. Never fails: what cannot be read is left out.
    virtual QList<ScannedAudioFile> scanFolder(const QString &folder) const = 0;
};

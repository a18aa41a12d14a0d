// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/FolderScanning.h"

// Walks a folder tree the way a file browser presents it: hidden names
// (leading ".") are skipped, symbolic links are neither followed nor taken,
// package folders (app, bundle, vst3 and the like) are one opaque entry, and
// folders that cannot be read are passed over. Only regular files with a
// supported extension are returned, sorted like the file manager sorts
// names: case-insensitive, digit runs by value (Take 2 before Take 10).
class FolderScanner final : public FolderScanning
{
public:
    QList<ScannedAudioFile> scanFolder(const QString &folder,
                                       QMap<QString, int> *skipped = nullptr) const override;

    // Whether a folder with this name is a package that is never entered.
    static bool isPackageName(QStringView name);
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Shows a folder in the desktop's file manager.
class FolderRevealing
{
public:
    virtual ~FolderRevealing() = default;
    virtual void revealFolder(const QString &path) = 0;
};

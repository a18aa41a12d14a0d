// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/FolderRevealing.h"

// Shows a folder, selected, in the desktop's file manager through the
// freedesktop FileManager1 interface; where no file manager answers, the
// folder is opened with the desktop's default handler.
class DesktopRevealer final : public FolderRevealing
{
public:
    void revealFolder(const QString &path) override;
};

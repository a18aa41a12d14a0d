// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/FolderRevealing.h"

#include <QStringList>

class RecordingRevealer final : public FolderRevealing
{
public:
    QStringList revealed;
    void revealFolder(const QString &path) override { revealed.append(path); }
};

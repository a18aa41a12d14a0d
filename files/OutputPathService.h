// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/OutputPathResolving.h"

class OutputPathService final : public OutputPathResolving
{
public:
    bool isInsideSourceTree(const QString &root, const QStringList &sourcePaths) const override;
    bool isWritable(const QString &path) const override;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/OutputPathResolving.h"
#include "model/AudioFileItem.h"

#include <QList>
#include <QString>

#include <optional>

namespace OutputFolderCheck {

// What the output settings warn about the chosen folder: that it overlaps the
// queued sources, or that it cannot be written to; absent when all is well or
// no folder is chosen.
std::optional<QString> warning(const std::optional<QString> &folder,
                               const QList<AudioFileItem> &queue, const OutputPathResolving &paths);

} // namespace OutputFolderCheck

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AudioFileItem.h"

#include <QList>
#include <QString>

#include <optional>

// The CSV report of a queue's results, written where the user chose.
namespace ReportExport {

// Why the report may not go to this path (an audio file, a queued source);
// absent when it may.
std::optional<QString> refusal(const QString &path, const QList<AudioFileItem> &queue);

// Writes the report of every item with a result; what went wrong, in the
// user's words, or absent when it was written.
std::optional<QString> write(const QString &path, const QList<AudioFileItem> &queue);

} // namespace ReportExport

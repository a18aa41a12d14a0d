// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ProcessingResult.h"

#include <QList>
#include <QStringList>

#include <optional>

// The run report: one row per processed file, comma-separated, quoted where
// needed, CRLF line ends, UTF-8 without a byte-order mark. English only, so
// that a spreadsheet or a script reads it the same way on every system.
namespace CSVReportService {

// The header row.
const QStringList &columns();

QString makeCSV(const QList<ProcessingResult> &results);
// One line, fields escaped and joined, without a line end.
QString row(const QStringList &fields);

// Writes the report, all or nothing: a complete new file replaces the old one
// in one step, and on any failure (a full disk included) the old one stays.
// The reason in the system's words when that fails.
std::optional<QString> write(const QString &path, const QList<ProcessingResult> &results);

// True for a path a report must never replace: one named like audio, or an
// existing file whose first bytes are those of an audio container.
bool looksLikeAudio(const QString &path);

} // namespace CSVReportService

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/LoudnessMeasurement.h"

#include <QString>

#include <optional>

namespace LoudnormReport {

// Reads the JSON block loudnorm prints last on standard error. Absent when
// the block is missing, cut short, malformed or lacks any of the five keys.
std::optional<LoudnessMeasurement> parse(const QString &ffmpegOutput);

} // namespace LoudnormReport

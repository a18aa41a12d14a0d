// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FriendlyError.h"

#include <exception>

class ProcessingError;

// Turns a failed file's error into a message in the interface language of the
// moment, naming the file, and the raw facts behind it.
namespace ErrorTranslator {

FriendlyError translate(const ProcessingError &error, const QString &fileName);

// Anything else a job can end with: the runner's own errors (no ffmpeg, or it
// cannot start) read like a file that could not be processed, with the cause
// in the details.
FriendlyError translate(const std::exception &error, const QString &fileName);

} // namespace ErrorTranslator

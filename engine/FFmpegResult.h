// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What one ffmpeg child left behind. A non-zero exit code is not an error here:
// the callers decide what it means.
struct FFmpegResult
{
    qint32 exitCode = 0;
    // Decoded as UTF-8, with bytes that are not kept as in paths (decodedPath).
    QString standardOutput;
    QString standardError;

    friend bool operator==(const FFmpegResult &, const FFmpegResult &) = default;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

// Reads ffmpeg's -progress report ("key=value" lines, a block per update)
// from pieces of standard output as they come, lines split anywhere.
class FFmpegProgress
{
public:
    // Takes the next piece; the newest position written so far, in
    // microseconds of output, when this piece completed one.
    std::optional<qint64> feed(QByteArrayView piece);

private:
    QByteArray m_line;
};

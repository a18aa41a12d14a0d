// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/FFmpegProgress.h"

std::optional<qint64> FFmpegProgress::feed(QByteArrayView piece)
{
    std::optional<qint64> newest;
    for (const char byte : piece) {
        if (byte != '\n') {
            // A runaway line (no newline for a long time) is not a report line.
            if (m_line.size() < 256)
                m_line.append(byte);
            continue;
        }
        // "out_time_us=1234567"; "N/A" before the first frame.
        constexpr QByteArrayView key("out_time_us=");
        if (m_line.startsWith(key)) {
            bool ok = false;
            const qint64 microseconds = m_line.mid(key.size()).trimmed().toLongLong(&ok);
            if (ok && microseconds >= 0)
                newest = microseconds;
        }
        m_line.clear();
    }
    return newest;
}

// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whatever ffmpeg (or a damaged file) makes it print, reading the measurement
// neither crashes nor finds one outside a braced block. (Keys are matched as
// JSON reads them, escapes included, so the raw text need not spell them.)
#include "engine/LoudnormReport.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto measurement = LoudnormReport::parse(text);
    if (measurement && (!text.contains(u'{') || !text.contains(u'}')))
        std::abort(); // a measurement out of text that holds no block
    return 0;
}

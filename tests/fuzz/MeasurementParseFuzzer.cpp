// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whatever ffmpeg (or a damaged file) makes it print, reading the measurement
// neither crashes nor returns a figure it did not read.
#include "engine/LoudnessMeasurement.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto measurement = LoudnessMeasurement::parse(text);
    if (measurement && !text.contains(QLatin1StringView("input_i")))
        std::abort(); // a measurement out of text that holds none
    return 0;
}

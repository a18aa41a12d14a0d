// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/OutputEncoding.h"
#include "model/AudioStreamFacts.h"
#include "model/OutputChange.h"
#include "model/SampleRateMode.h"

#include <QList>
#include <QStringList>

// What the written file is in rate and channels, and whether its samples are
// dithered, decided before ffmpeg runs. "Preserve original" means as close as
// the encoder allows: a rate it cannot take becomes the nearest one it can in
// the same family (96 kHz to 48 kHz, 88.2 kHz to 44.1 kHz), and more channels
// than it takes are downmixed (ITU-R BS.775, as ffmpeg's -ac does).
struct OutputShape
{
    int sampleRate = 0;
    int channels = 0;
    bool downmixed = false;
    // Triangular (TPDF) dither on the way to integer PCM, wherever the signal
    // has more resolution than the output keeps.
    bool dithered = false;
    QList<OutputChange> changes;

    static OutputShape decide(const AudioStreamFacts &source, const OutputEncoding &encoding,
                              SampleRateMode mode, bool gainApplied);

    // "-ar", then "-ac" and the dither where they apply.
    QStringList arguments() const;
    // The written file can differ from a prediction made on the source: its
    // rate or channels change, or the encoder is lossy.
    bool differsFrom(const AudioStreamFacts &source, const OutputEncoding &encoding) const;

    friend bool operator==(const OutputShape &, const OutputShape &) = default;
};

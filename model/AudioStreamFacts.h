// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What a source's first audio stream is, as its container declares it.
struct AudioStreamFacts
{
    int sampleRate = 0;
    int channels = 0;
    // Floating-point samples (32- or 64-bit PCM), which may hold peaks above full scale.
    bool isFloat = false;
    // Bits per sample of PCM and of lossless codecs; 0 for a lossy stream,
    // whose decoder gives float.
    int bits = 0;
    // ffmpeg's name of the codec: "pcm_s24le", "mp3", "aac", "alac".
    QString codec{};

    friend bool operator==(const AudioStreamFacts &, const AudioStreamFacts &) = default;
};

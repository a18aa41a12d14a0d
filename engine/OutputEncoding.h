// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/OutputBitDepth.h"
#include "model/OutputFormatMode.h"
#include "model/SourceAudioFormat.h"

#include <QList>
#include <QString>
#include <QStringList>

// The output file's extension, ffmpeg's codec arguments for it and what the
// encoder can take.
struct OutputEncoding
{
    enum class Family
    {
        IntegerPcm,
        FloatPcm,
        Mp3,
        Aac,
        Alac,
    };

    // Without the dot.
    QString fileExtension;
    // Always begins with "-c:a".
    QStringList codecArguments;
    Family family = Family::IntegerPcm;

    // Bits per sample of integer PCM (and of ALAC, which holds integers); 0 otherwise.
    int integerBits() const;
    // ffmpeg's name of the codec written ("pcm_s24le", "mp3", "aac", "alac").
    QString codec() const;
    // The encoder changes the signal beyond its sample format (MP3, AAC).
    bool isLossy() const { return family == Family::Mp3 || family == Family::Aac; }
    // The rates the encoder takes; empty when it takes any.
    QList<int> sampleRates() const;
    // The most channels the encoder takes; 0 when there is no limit.
    int maxChannels() const;

    // The bit depth applies to PCM only; MP3 is always LAME V2 and AAC 256 kbit/s.
    // Only an AIFF source kept as AIFF keeps its own extension text ("AIF" stays "AIF").
    // WAV switches to RF64 by itself once it passes 4 GiB.
    static OutputEncoding resolve(SourceAudioFormat sourceFormat, OutputFormatMode mode,
                                  OutputBitDepth bitDepth, const QString &originalExtension);

    // This encoding for the stream actually found: lossless stays lossless
    // (an M4A kept as it is holds ALAC when its source does, at its depth).
    OutputEncoding forSource(const QString &sourceCodec, int sourceBits) const;
    // Plain stream copy ("-c:a copy") where the source's audio is already
    // what this encoding would write.
    bool copies(const QString &sourceCodec) const;

    friend bool operator==(const OutputEncoding &, const OutputEncoding &) = default;
};

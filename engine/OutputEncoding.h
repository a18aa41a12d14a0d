// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/OutputBitDepth.h"
#include "model/OutputFormatMode.h"
#include "model/SourceAudioFormat.h"

#include <QString>
#include <QStringList>

// The output file's extension and ffmpeg's codec arguments for it.
struct OutputEncoding
{
    // Without the dot.
    QString fileExtension;
    // Always begins with "-c:a".
    QStringList codecArguments;

    // The bit depth applies to PCM only; MP3 is always LAME V2 and AAC 256 kbit/s.
    // Only an AIFF source kept as AIFF keeps its own extension text ("AIF" stays "AIF").
    static OutputEncoding resolve(SourceAudioFormat sourceFormat, OutputFormatMode mode,
                                  OutputBitDepth bitDepth, const QString &originalExtension);

    friend bool operator==(const OutputEncoding &, const OutputEncoding &) = default;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

// What a written file really is, read back with libavformat.
struct MediaProbe
{
    QString containerName; // libavformat's demuxer name, e.g. "wav", "mov,mp4,m4a,3gp,3g2,mj2"
    QString audioCodec;    // e.g. "pcm_s24le", "mp3", "aac"
    int sampleRate = 0;
    int channels = 0;
    int attachedPictures = 0;
    int otherVideoStreams = 0;

    static std::optional<MediaProbe> read(const QString &path);
};

// SPDX-License-Identifier: GPL-3.0-or-later
#include "MediaProbe.h"

#include <QFile>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

std::optional<MediaProbe> MediaProbe::read(const QString &path)
{
    AVFormatContext *context = nullptr;
    if (avformat_open_input(&context, QFile::encodeName(path).constData(), nullptr, nullptr) < 0)
        return std::nullopt;
    avformat_find_stream_info(context, nullptr);

    MediaProbe probe;
    probe.containerName = QString::fromLatin1(context->iformat->name);
    bool audioSeen = false;
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        const AVStream *stream = context->streams[i];
        const AVCodecParameters *codec = stream->codecpar;
        if (codec->codec_type == AVMEDIA_TYPE_AUDIO && !audioSeen) {
            audioSeen = true;
            probe.audioCodec = QString::fromLatin1(avcodec_get_name(codec->codec_id));
            probe.sampleRate = codec->sample_rate;
            probe.channels = codec->ch_layout.nb_channels;
        } else if (codec->codec_type == AVMEDIA_TYPE_VIDEO) {
            if (stream->disposition & AV_DISPOSITION_ATTACHED_PIC)
                ++probe.attachedPictures;
            else
                ++probe.otherVideoStreams;
        }
    }
    avformat_close_input(&context);
    if (!audioSeen)
        return std::nullopt;
    return probe;
}

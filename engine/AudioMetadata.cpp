// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/AudioMetadata.h"

#include "model/StandardPath.h"

#include <QFile>

#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

extern "C" {
#include <libavcodec/codec_desc.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/log.h>
}

namespace AudioMetadata {

namespace {

// CAF stores its rate as a float64, which libavformat truncates to an integer;
// read it from the description chunk (always the first chunk) instead.
std::optional<double> cafDeclaredRate(const QString &path)
{
    QFile file;
    const int fd = ::open(encodedPath(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0 || !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        if (fd >= 0)
            ::close(fd);
        return std::nullopt;
    }
    const QByteArray head = file.read(28);
    if (head.size() < 28 || !head.startsWith("caff") || head.mid(8, 4) != "desc")
        return std::nullopt;
    quint64 bits = 0;
    for (int i = 20; i < 28; ++i)
        bits = (bits << 8) | static_cast<quint8>(head[i]);
    double rate;
    std::memcpy(&rate, &bits, sizeof rate);
    return rate;
}

} // namespace

bool isSomethingOtherThanAFile(const QString &path)
{
    struct stat info;
    return ::stat(encodedPath(path).constData(), &info) == 0 && !S_ISREG(info.st_mode);
}

std::optional<int> roundedSampleRate(double hertz)
{
    if (!std::isfinite(hertz) || hertz <= 0 || hertz > 1e9)
        return std::nullopt;
    return static_cast<int>(std::round(hertz));
}

std::optional<int> sampleRate(const QString &path)
{
    const auto facts = streamFacts(path);
    return facts ? std::optional(facts->sampleRate) : std::nullopt;
}

std::optional<AudioStreamFacts> streamFacts(const QString &path)
{
    static std::once_flag quiet;
    std::call_once(quiet, [] { av_log_set_level(AV_LOG_QUIET); });
    if (isSomethingOtherThanAFile(path))
        return std::nullopt;

    AVFormatContext *context = nullptr;
    AVDictionary *options = nullptr;
    // The header carries the rate; the WAV demuxer would otherwise read up to
    // 32 packets to look for a hidden compressed stream.
    av_dict_set(&options, "max_probe_packets", "1", 0);
    const QByteArray systemPath = encodedPath(path);
    const int opened = avformat_open_input(&context, systemPath.constData(), nullptr, &options);
    av_dict_free(&options);
    if (opened < 0)
        return std::nullopt;

    const auto firstAudio = [context]() -> const AVCodecParameters * {
        for (unsigned i = 0; i < context->nb_streams; ++i) {
            const AVCodecParameters *codec = context->streams[i]->codecpar;
            if (codec->codec_type == AVMEDIA_TYPE_AUDIO)
                return codec;
        }
        return nullptr;
    };
    const AVCodecParameters *codec = firstAudio();
    // MPEG audio declares its rate in the frames, not in a header: decode the
    // first few, no more.
    if (codec && (codec->sample_rate <= 0 || codec->ch_layout.nb_channels <= 0)) {
        context->max_analyze_duration = AV_TIME_BASE / 10;
        context->probesize = 64 * 1024;
        if (avformat_find_stream_info(context, nullptr) >= 0)
            codec = firstAudio();
    }
    std::optional<AudioStreamFacts> facts;
    if (codec) {
        const AVCodecDescriptor *descriptor = avcodec_descriptor_get(codec->codec_id);
        const bool pcm = codec->codec_id >= AV_CODEC_ID_FIRST_AUDIO &&
                         codec->codec_id < AV_CODEC_ID_ADPCM_IMA_QT;
        const bool isFloat = pcm && descriptor && QByteArray(descriptor->name).startsWith("pcm_f");
        const bool lossless = codec->codec_id == AV_CODEC_ID_ALAC;
        // ALAC's depth is in its configuration (after the 12-byte atom
        // header where the container keeps one); the header may not say it.
        int losslessBits = codec->bits_per_raw_sample;
        if (lossless && losslessBits == 0 && codec->extradata_size >= 24)
            losslessBits = codec->extradata[codec->extradata_size >= 36 ? 17 : 5];
        if (const auto rate = roundedSampleRate(codec->sample_rate))
            facts =
                AudioStreamFacts{*rate, codec->ch_layout.nb_channels, isFloat,
                                 pcm        ? codec->bits_per_coded_sample
                                 : lossless ? losslessBits
                                            : 0,
                                 descriptor ? QString::fromLatin1(descriptor->name) : QString()};
    }
    avformat_close_input(&context);
    if (facts) {
        // libavformat truncates CAF's float64 rate.
        if (const auto declared = cafDeclaredRate(path))
            if (const auto rate = roundedSampleRate(*declared))
                facts->sampleRate = *rate;
    }
    return facts;
}

std::optional<double> durationSeconds(const QString &path)
{
    if (isSomethingOtherThanAFile(path))
        return std::nullopt;
    AVFormatContext *context = nullptr;
    const QByteArray systemPath = encodedPath(path);
    if (avformat_open_input(&context, systemPath.constData(), nullptr, nullptr) < 0)
        return std::nullopt;
    std::optional<double> seconds;
    for (unsigned i = 0; i < context->nb_streams && !seconds; ++i) {
        const AVStream *stream = context->streams[i];
        if (stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO &&
            stream->duration != AV_NOPTS_VALUE && stream->duration > 0)
            seconds = static_cast<double>(stream->duration) * av_q2d(stream->time_base);
    }
    if (!seconds) {
        context->probesize = 64 * 1024;
        if (avformat_find_stream_info(context, nullptr) >= 0 && context->duration > 0)
            seconds = static_cast<double>(context->duration) / AV_TIME_BASE;
    }
    avformat_close_input(&context);
    return seconds;
}

std::optional<FileStamp> stamp(const QString &path)
{
    struct stat info
    {};
    if (::stat(encodedPath(path).constData(), &info) != 0)
        return std::nullopt;
    return FileStamp{.size = static_cast<qint64>(info.st_size),
                     .modifiedNanoseconds =
                         static_cast<qint64>(info.st_mtim.tv_sec) * 1'000'000'000 +
                         info.st_mtim.tv_nsec,
                     .inode = static_cast<quint64>(info.st_ino)};
}

} // namespace AudioMetadata

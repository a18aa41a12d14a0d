// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/AudioMetadata.h"

#include "model/StandardPath.h"

#include <QFile>

#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

extern "C" {
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
    static std::once_flag quiet;
    std::call_once(quiet, [] { av_log_set_level(AV_LOG_QUIET); });
    if (isSomethingOtherThanAFile(path))
        return std::nullopt;

    if (const auto declared = cafDeclaredRate(path))
        return roundedSampleRate(*declared);

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

    const auto firstAudioRate = [context]() -> std::optional<int> {
        for (unsigned i = 0; i < context->nb_streams; ++i) {
            const AVCodecParameters *codec = context->streams[i]->codecpar;
            if (codec->codec_type == AVMEDIA_TYPE_AUDIO)
                return codec->sample_rate;
        }
        return std::nullopt;
    };
    std::optional<int> rate = firstAudioRate();
    // MPEG audio declares its rate in the frames, not in a header: decode the
    // first few, no more.
    if (rate && *rate <= 0) {
        context->max_analyze_duration = AV_TIME_BASE / 10;
        context->probesize = 64 * 1024;
        if (avformat_find_stream_info(context, nullptr) >= 0)
            rate = firstAudioRate();
    }
    avformat_close_input(&context);
    return rate ? roundedSampleRate(*rate) : std::nullopt;
}

} // namespace AudioMetadata

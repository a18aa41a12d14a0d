// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputEncoding.h"

namespace {

OutputEncoding pcm(const QString &extension, OutputBitDepth depth, bool bigEndian)
{
    const QString order = bigEndian ? QStringLiteral("be") : QStringLiteral("le");
    QString codec;
    switch (depth) {
    case OutputBitDepth::Bit16:
        codec = QStringLiteral("pcm_s16") + order;
        break;
    case OutputBitDepth::Bit24:
        codec = QStringLiteral("pcm_s24") + order;
        break;
    case OutputBitDepth::Float32:
        codec = QStringLiteral("pcm_f32") + order;
        break;
    }
    OutputEncoding encoding{extension,
                            {QStringLiteral("-c:a"), codec},
                            depth == OutputBitDepth::Float32 ? OutputEncoding::Family::FloatPcm
                                                             : OutputEncoding::Family::IntegerPcm};
    // A 32-bit RIFF header cannot describe a file past 4 GiB.
    if (extension == u"wav")
        encoding.codecArguments << QStringLiteral("-rf64") << QStringLiteral("auto");
    return encoding;
}

OutputEncoding lameV2()
{
    return {QStringLiteral("mp3"),
            {QStringLiteral("-c:a"), QStringLiteral("libmp3lame"), QStringLiteral("-q:a"),
             QStringLiteral("2")},
            OutputEncoding::Family::Mp3};
}

OutputEncoding aac256()
{
    return {QStringLiteral("m4a"),
            {QStringLiteral("-c:a"), QStringLiteral("aac"), QStringLiteral("-b:a"),
             QStringLiteral("256k")},
            OutputEncoding::Family::Aac};
}

} // namespace

int OutputEncoding::integerBits() const
{
    if (family == Family::Alac)
        return codecArguments.contains(QStringLiteral("s16p")) ? 16 : 24;
    if (family != Family::IntegerPcm || codecArguments.size() < 2)
        return 0;
    return codecArguments.at(1).mid(5, 2).toInt();
}

QString OutputEncoding::codec() const
{
    const QString name = codecArguments.value(1);
    return name == u"libmp3lame" ? QStringLiteral("mp3") : name;
}

OutputEncoding OutputEncoding::forSource(const QString &sourceCodec, int sourceBits) const
{
    if (family != Family::Aac || sourceCodec != u"alac")
        return *this;
    return {fileExtension,
            {QStringLiteral("-c:a"), QStringLiteral("alac"), QStringLiteral("-sample_fmt"),
             // An unknown depth is kept as 24 bits: never fewer than the source had.
             sourceBits == 16 ? QStringLiteral("s16p") : QStringLiteral("s32p")},
            Family::Alac};
}

bool OutputEncoding::copies(const QString &sourceCodec) const
{
    return !sourceCodec.isEmpty() &&
           (sourceCodec == codec() || (family == Family::Mp3 && sourceCodec == u"mp3float"));
}

QList<int> OutputEncoding::sampleRates() const
{
    switch (family) {
    case Family::Mp3:
        return {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};
    case Family::Aac:
        return {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000, 64000, 88200, 96000};
    case Family::IntegerPcm:
    case Family::FloatPcm:
    case Family::Alac:
        break;
    }
    return {};
}

int OutputEncoding::maxChannels() const
{
    switch (family) {
    case Family::Mp3:
        return 2;
    case Family::Aac:
    case Family::Alac:
        return 8;
    case Family::IntegerPcm:
    case Family::FloatPcm:
        break;
    }
    return 0;
}

OutputEncoding OutputEncoding::resolve(SourceAudioFormat sourceFormat, OutputFormatMode mode,
                                       OutputBitDepth bitDepth, const QString &originalExtension)
{
    switch (mode) {
    case OutputFormatMode::Wav:
        return pcm(QStringLiteral("wav"), bitDepth, false);
    case OutputFormatMode::Aiff:
        return pcm(QStringLiteral("aiff"), bitDepth, true);
    case OutputFormatMode::Caf:
        return pcm(QStringLiteral("caf"), bitDepth, true);
    case OutputFormatMode::Mp3:
        return lameV2();
    case OutputFormatMode::KeepOriginal:
        break;
    }
    switch (sourceFormat) {
    case SourceAudioFormat::Wav:
        return pcm(QStringLiteral("wav"), bitDepth, false);
    case SourceAudioFormat::Aiff:
    case SourceAudioFormat::Aif:
        return pcm(originalExtension, bitDepth, true);
    case SourceAudioFormat::Mp3:
        return lameV2();
    case SourceAudioFormat::M4a:
        return aac256();
    case SourceAudioFormat::Caf:
        return pcm(QStringLiteral("caf"), bitDepth, true);
    }
    return {};
}

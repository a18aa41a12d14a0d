// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputEncoding.h"

namespace {

QStringList littleEndianPcm(OutputBitDepth depth)
{
    return {QStringLiteral("-c:a"), depth == OutputBitDepth::Bit16 ? QStringLiteral("pcm_s16le")
                                                                   : QStringLiteral("pcm_s24le")};
}

QStringList bigEndianPcm(OutputBitDepth depth)
{
    return {QStringLiteral("-c:a"), depth == OutputBitDepth::Bit16 ? QStringLiteral("pcm_s16be")
                                                                   : QStringLiteral("pcm_s24be")};
}

QStringList lameV2()
{
    return {QStringLiteral("-c:a"), QStringLiteral("libmp3lame"), QStringLiteral("-q:a"),
            QStringLiteral("2")};
}

} // namespace

OutputEncoding OutputEncoding::resolve(SourceAudioFormat sourceFormat, OutputFormatMode mode,
                                       OutputBitDepth bitDepth, const QString &originalExtension)
{
    switch (mode) {
    case OutputFormatMode::Wav:
        return {QStringLiteral("wav"), littleEndianPcm(bitDepth)};
    case OutputFormatMode::Aiff:
        return {QStringLiteral("aiff"), bigEndianPcm(bitDepth)};
    case OutputFormatMode::Caf:
        return {QStringLiteral("caf"), bigEndianPcm(bitDepth)};
    case OutputFormatMode::Mp3:
        return {QStringLiteral("mp3"), lameV2()};
    case OutputFormatMode::KeepOriginal:
        break;
    }

    switch (sourceFormat) {
    case SourceAudioFormat::Wav:
        return {QStringLiteral("wav"), littleEndianPcm(bitDepth)};
    case SourceAudioFormat::Aiff:
    case SourceAudioFormat::Aif:
        return {originalExtension, bigEndianPcm(bitDepth)};
    case SourceAudioFormat::Mp3:
        return {QStringLiteral("mp3"), lameV2()};
    case SourceAudioFormat::M4a:
        return {QStringLiteral("m4a"),
                {QStringLiteral("-c:a"), QStringLiteral("aac"), QStringLiteral("-b:a"),
                 QStringLiteral("256k")}};
    case SourceAudioFormat::Caf:
        return {QStringLiteral("caf"), bigEndianPcm(bitDepth)};
    }
    return {};
}

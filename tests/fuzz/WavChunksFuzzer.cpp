// SPDX-License-Identifier: GPL-3.0-or-later
//
// Any bytes as a source's chunk list: reading never crashes, hangs or reads
// past the file; what it carries into a written WAV appends cleanly, and the
// written file's RIFF size then matches its length.
#include "engine/WavChunks.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <cstdint>
#include <cstdlib>

namespace {

QTemporaryDir *sandbox = nullptr;

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    sandbox = new QTemporaryDir;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // The input follows a WAVE header, so the chunk walk is what gets fuzzed.
    QByteArray source("RIFF\0\0\0\0WAVE", 12);
    source.append(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    qToLittleEndian(quint32(source.size() - 8), source.data() + 4);
    const QString sourcePath = sandbox->filePath(QStringLiteral("source.wav"));
    if (!write(sourcePath, source))
        return 0;
    const auto chunks = WavChunks::read(sourcePath);
    if (!chunks)
        std::abort(); // a WAVE header is always a WAVE
    if (chunks->isDamaged() && !chunks->chunks().isEmpty())
        std::abort(); // a damaged list carries nothing
    chunks->bext();
    chunks->markers(48000, 44100);
    const QList<WavChunks::Chunk> carried = chunks->carried(48000, 44100);

    QByteArray written("RIFF\0\0\0\0WAVEdata\0\0\0\0", 20);
    qToLittleEndian(quint32(written.size() - 8), written.data() + 4);
    const QString writtenPath = sandbox->filePath(QStringLiteral("written.wav"));
    if (!write(writtenPath, written) || !WavChunks::append(writtenPath, carried))
        std::abort();
    QFile result(writtenPath);
    if (!result.open(QIODevice::ReadOnly))
        std::abort();
    const QByteArray bytes = result.readAll();
    if (qFromLittleEndian<quint32>(bytes.constData() + 4) != quint32(bytes.size() - 8))
        std::abort();
    return 0;
}

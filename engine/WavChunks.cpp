// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/WavChunks.h"

#include "model/StandardPath.h"

#include <QtEndian>

#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Metadata chunks are small; anything larger is not one, and a size that
// says otherwise marks a damaged chunk list.
constexpr quint32 largestMetadataChunk = 16 * 1024 * 1024;

class File
{
public:
    File(const QString &path, int flags)
        : m_fd(::open(encodedPath(path).constData(), flags | O_CLOEXEC))
    {}
    ~File()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    bool isOpen() const { return m_fd >= 0; }
    int fd() const { return m_fd; }

    bool readAt(qint64 offset, char *data, qint64 size) const
    {
        for (qint64 done = 0; done < size;) {
            const ssize_t got = ::pread(m_fd, data + done, size - done, offset + done);
            if (got <= 0)
                return false;
            done += got;
        }
        return true;
    }

    bool writeAt(qint64 offset, const char *data, qint64 size) const
    {
        for (qint64 done = 0; done < size;) {
            const ssize_t put = ::pwrite(m_fd, data + done, size - done, offset + done);
            if (put <= 0)
                return false;
            done += put;
        }
        return true;
    }

    qint64 size() const
    {
        struct stat info
        {};
        return ::fstat(m_fd, &info) == 0 ? info.st_size : -1;
    }

private:
    int m_fd;
};

quint32 u32(const QByteArray &bytes, qsizetype at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

void putU32(QByteArray &bytes, qsizetype at, quint32 value)
{
    qToLittleEndian(value, bytes.data() + at);
}

quint32 scaled(quint32 position, double ratio)
{
    return static_cast<quint32>(
        std::clamp(std::llround(position * ratio), 0LL, static_cast<long long>(UINT32_MAX)));
}

QByteArray field(const QByteArray &body, qsizetype at, qsizetype size)
{
    const QByteArray raw = body.mid(at, size);
    const qsizetype end = raw.indexOf('\0');
    return end < 0 ? raw : raw.left(end);
}

// cue: a count, then 24-byte points whose position and sample offset are positions.
QByteArray scaledCue(QByteArray body, double ratio)
{
    if (body.size() < 4)
        return body;
    const quint32 count = u32(body, 0);
    for (quint32 i = 0; i < count && 4 + (i + 1) * 24 <= quint64(body.size()); ++i) {
        const qsizetype point = 4 + i * 24;
        putU32(body, point + 4, scaled(u32(body, point + 4), ratio));
        putU32(body, point + 20, scaled(u32(body, point + 20), ratio));
    }
    return body;
}

// smpl: the sample period, then loops of 24 bytes with a start and an end.
QByteArray scaledSmpl(QByteArray body, double ratio, int toRate)
{
    if (body.size() < 36)
        return body;
    putU32(body, 8, static_cast<quint32>(std::llround(1e9 / toRate)));
    const quint32 loops = u32(body, 28);
    for (quint32 i = 0; i < loops && 36 + (i + 1) * 24 <= quint64(body.size()); ++i) {
        const qsizetype loop = 36 + i * 24;
        putU32(body, loop + 8, scaled(u32(body, loop + 8), ratio));
        putU32(body, loop + 12, scaled(u32(body, loop + 12), ratio));
    }
    return body;
}

// LIST/adtl: labels and notes carry no position; a labelled text region its length.
QByteArray scaledAdtl(QByteArray body, double ratio)
{
    for (qsizetype at = 4; at + 8 <= body.size();) {
        const quint32 size = u32(body, at + 4);
        if (body.mid(at, 4) == "ltxt" && size >= 8 &&
            quint64(at) + 8 + size <= quint64(body.size()))
            putU32(body, at + 12, scaled(u32(body, at + 12), ratio));
        at += 8 + size + (size & 1);
    }
    return body;
}

bool isAdtl(const WavChunks::Chunk &chunk)
{
    return chunk.id == "LIST" && chunk.body.startsWith("adtl");
}

QByteArray bigEndian32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray bigEndian64(quint64 value)
{
    QByteArray bytes(8, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

// Writes the bytes at the end of the file; false, with the file as it was, when that fails.
bool appendBytes(const File &file, const QByteArray &bytes, qint64 &end)
{
    end = file.size();
    if (end < 0 || !file.writeAt(end, bytes.constData(), bytes.size())) {
        if (end >= 0) [[maybe_unused]]
            const int undone = ::ftruncate(file.fd(), end);
        return false;
    }
    return true;
}

} // namespace

std::optional<WavChunks> WavChunks::read(const QString &path)
{
    const File file(path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen())
        return std::nullopt;
    const qint64 size = file.size();
    QByteArray header(12, '\0');
    if (size < 12 || !file.readAt(0, header.data(), 12) || header.mid(8, 4) != "WAVE" ||
        (!header.startsWith("RIFF") && !header.startsWith("RF64")))
        return std::nullopt;

    WavChunks wav;
    WavChunks damaged;
    damaged.m_damaged = true;
    quint64 rf64DataSize = 0;
    for (qint64 at = 12; at + 8 <= size;) {
        QByteArray chunkHeader(8, '\0');
        if (!file.readAt(at, chunkHeader.data(), 8))
            return damaged;
        const QByteArray id = chunkHeader.left(4);
        quint64 length = u32(chunkHeader, 4);
        if (id == "data") {
            if (length == 0xFFFFFFFF && rf64DataSize > 0)
                length = rf64DataSize;
            at += 8 + length + (length & 1);
            continue; // the audio is never read
        }
        if (length > largestMetadataChunk || at + 8 + qint64(length) > size)
            return damaged;
        Chunk chunk{id, QByteArray(qsizetype(length), '\0')};
        if (!file.readAt(at + 8, chunk.body.data(), qint64(length)))
            return damaged;
        if (id == "ds64" && length >= 16)
            rf64DataSize = qFromLittleEndian<quint64>(chunk.body.constData() + 8);
        wav.m_chunks.append(std::move(chunk));
        at += 8 + qint64(length) + qint64(length & 1);
    }
    return wav;
}

std::optional<WavChunks::Bext> WavChunks::bext() const
{
    for (const Chunk &chunk : m_chunks) {
        if (chunk.id != "bext" || chunk.body.size() < 602)
            continue;
        const QByteArray &body = chunk.body;
        return Bext{field(body, 0, 256),  field(body, 256, 32),
                    field(body, 288, 32), field(body, 320, 10),
                    field(body, 330, 8),  qFromLittleEndian<quint64>(body.constData() + 338),
                    body.mid(348, 64),    field(body, 602, body.size() - 602)};
    }
    return std::nullopt;
}

QList<WavChunks::Chunk> WavChunks::carried(int fromRate, int toRate) const
{
    const double ratio = fromRate > 0 && toRate > 0 ? double(toRate) / fromRate : 1.0;
    QList<Chunk> carried;
    for (const Chunk &chunk : m_chunks) {
        if (chunk.id == "iXML")
            carried.append(chunk);
        else if (chunk.id == "cue ")
            carried.append({chunk.id, scaledCue(chunk.body, ratio)});
        else if (chunk.id == "smpl")
            carried.append({chunk.id, scaledSmpl(chunk.body, ratio, toRate)});
        else if (isAdtl(chunk))
            carried.append({chunk.id, scaledAdtl(chunk.body, ratio)});
    }
    return carried;
}

QStringList WavChunks::kinds() const
{
    QStringList kinds;
    const auto note = [&kinds](const char *kind) {
        if (!kinds.contains(QLatin1StringView(kind)))
            kinds.append(QString::fromLatin1(kind));
    };
    for (const Chunk &chunk : m_chunks) {
        if (chunk.id == "bext")
            note("bext");
        else if (chunk.id == "iXML")
            note("iXML");
        else if (chunk.id == "cue " || isAdtl(chunk))
            note("markers");
        else if (chunk.id == "smpl")
            note("loops");
    }
    return kinds;
}

QList<WavChunks::Marker> WavChunks::markers(int fromRate, int toRate) const
{
    const double ratio = fromRate > 0 && toRate > 0 ? double(toRate) / fromRate : 1.0;
    QList<Marker> markers;
    for (const Chunk &chunk : m_chunks) {
        if (chunk.id != "cue " || chunk.body.size() < 4)
            continue;
        const quint32 count = u32(chunk.body, 0);
        for (quint32 i = 0; i < count && 4 + (i + 1) * 24 <= quint64(chunk.body.size()); ++i)
            markers.append(
                {u32(chunk.body, 4 + i * 24), scaled(u32(chunk.body, 4 + i * 24 + 4), ratio), {}});
    }
    for (const Chunk &chunk : m_chunks) {
        if (!isAdtl(chunk))
            continue;
        for (qsizetype at = 4; at + 8 <= chunk.body.size();) {
            const quint32 size = u32(chunk.body, at + 4);
            if (chunk.body.mid(at, 4) == "labl" && size >= 4 &&
                quint64(at) + 8 + size <= quint64(chunk.body.size())) {
                const quint32 id = u32(chunk.body, at + 8);
                for (Marker &marker : markers)
                    if (marker.id == id)
                        marker.name = field(chunk.body, at + 12, size - 4);
            }
            at += 8 + size + (size & 1);
        }
    }
    return markers;
}

bool WavChunks::appendAiffMarkers(const QString &path, const QList<Marker> &markers)
{
    if (markers.isEmpty())
        return true;
    const File file(path, O_RDWR);
    QByteArray header(12, '\0');
    if (!file.isOpen() || !file.readAt(0, header.data(), 12) || !header.startsWith("FORM") ||
        (header.mid(8, 4) != "AIFF" && header.mid(8, 4) != "AIFC"))
        return false;
    QByteArray body(2, '\0');
    qToBigEndian(quint16(markers.size()), body.data());
    for (qsizetype i = 0; i < markers.size(); ++i) {
        QByteArray id(2, '\0');
        qToBigEndian(quint16(i + 1), id.data()); // AIFF marker ids are positive and small
        const QByteArray name = markers[i].name.left(255);
        QByteArray pstring = char(name.size()) + name;
        if (pstring.size() & 1)
            pstring.append('\0');
        body += id + bigEndian32(quint32(markers[i].position)) + pstring;
    }
    QByteArray chunk = "MARK" + bigEndian32(quint32(body.size())) + body;
    qint64 end = 0;
    if (file.size() & 1)
        chunk.prepend('\0');
    if (!appendBytes(file, chunk, end))
        return false;
    return file.writeAt(4, bigEndian32(quint32(end + chunk.size() - 8)).constData(), 4);
}

bool WavChunks::appendCafMarkers(const QString &path, const QList<Marker> &markers)
{
    if (markers.isEmpty())
        return true;
    const File file(path, O_RDWR);
    QByteArray header(8, '\0');
    if (!file.isOpen() || !file.readAt(0, header.data(), 8) || !header.startsWith("caff"))
        return false;
    // Names in a string table; each marker points at its entry.
    QByteArray strings;
    QByteArray entries;
    QByteArray marks = bigEndian32(0) + bigEndian32(quint32(markers.size())); // no SMPTE time
    for (qsizetype i = 0; i < markers.size(); ++i) {
        const quint32 id = quint32(i + 1);
        entries += bigEndian32(id) + bigEndian64(quint64(strings.size()));
        strings += markers[i].name + '\0';
        double frame = double(markers[i].position);
        quint64 bits = 0;
        std::memcpy(&bits, &frame, sizeof bits);
        marks += bigEndian32(0) /* a generic marker */ + bigEndian64(bits) + bigEndian32(id) +
                 QByteArray(8, '\0') /* SMPTE time */ + bigEndian32(0) /* all channels */;
    }
    const QByteArray strg = bigEndian32(quint32(markers.size())) + entries + strings;
    const QByteArray chunks = "strg" + bigEndian64(quint64(strg.size())) + strg + "mark" +
                              bigEndian64(quint64(marks.size())) + marks;
    qint64 end = 0;
    return appendBytes(file, chunks, end);
}

QStringList WavChunks::bextArguments(const Bext &bext, int fromRate, int toRate,
                                     const QString &historyLine)
{
    // Values travel as paths do (decodedPath), so their bytes reach the file unchanged.
    const auto set = [](const char *key, const QByteArray &value) {
        return QStringList{QStringLiteral("-metadata"),
                           QLatin1StringView(key) + u'=' + decodedPath(value)};
    };
    const double ratio = fromRate > 0 && toRate > 0 ? double(toRate) / fromRate : 1.0;
    QByteArray history = bext.codingHistory;
    if (!history.isEmpty() && !history.endsWith('\n'))
        history += "\r\n";
    history += historyLine.toUtf8() + "\r\n";

    QStringList arguments{QStringLiteral("-write_bext"), QStringLiteral("1")};
    arguments << set("description", bext.description) << set("originator", bext.originator)
              << set("originator_reference", bext.originatorReference)
              << set("origination_date", bext.originationDate)
              << set("origination_time", bext.originationTime)
              << set("time_reference", QByteArray::number(qulonglong(
                                           std::llround(double(bext.timeReference) * ratio))))
              << set("coding_history", history);
    if (bext.umid.count('\0') != bext.umid.size())
        arguments << set("umid", "0x" + bext.umid.toHex().toUpper());
    return arguments;
}

bool WavChunks::append(const QString &path, const QList<Chunk> &chunks)
{
    if (chunks.isEmpty())
        return true;
    const File file(path, O_RDWR);
    QByteArray header(12, '\0');
    if (!file.isOpen() || !file.readAt(0, header.data(), 12) || header.mid(8, 4) != "WAVE")
        return false;
    const bool rf64 = header.startsWith("RF64");
    if (!rf64 && !header.startsWith("RIFF"))
        return false;
    const qint64 before = file.size();

    QByteArray tail;
    if (before & 1)
        tail.append('\0'); // the last chunk's pad byte
    for (const Chunk &chunk : chunks) {
        QByteArray chunkHeader = chunk.id.leftJustified(4, ' ', true) + QByteArray(4, '\0');
        putU32(chunkHeader, 4, quint32(chunk.body.size()));
        tail += chunkHeader + chunk.body;
        if (chunk.body.size() & 1)
            tail.append('\0');
    }
    const qint64 after = before + tail.size();
    qint64 end = 0;
    if ((!rf64 && after - 8 > qint64(UINT32_MAX)) || !appendBytes(file, tail, end))
        return false;
    if (rf64) {
        // ds64 follows the header: its first field is the 64-bit RIFF size.
        QByteArray size(8, '\0');
        qToLittleEndian(quint64(after - 8), size.data());
        return file.writeAt(20, size.constData(), 8);
    }
    QByteArray size(4, '\0');
    putU32(size, 0, quint32(after - 8));
    return file.writeAt(4, size.constData(), 4);
}

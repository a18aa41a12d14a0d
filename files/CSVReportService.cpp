// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/CSVReportService.h"

#include "engine/SystemError.h"
#include "model/NumberFormat.h"
#include "model/SourceAudioFormat.h"
#include "model/StandardPath.h"

#include <QRandomGenerator>

#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace CSVReportService {

namespace {

QString figure(const std::optional<double> &value, bool withSign = false)
{
    if (!value || !std::isfinite(*value))
        return {};
    return withSign ? NumberFormat::signedFixed(*value, 1) : NumberFormat::fixed(*value, 1);
}

QString escaped(const QString &field)
{
    if (!field.contains(u',') && !field.contains(u'"') && !field.contains(u'\n') &&
        !field.contains(u'\r'))
        return field;
    QString quoted = field;
    quoted.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

} // namespace

const QStringList &columns()
{
    static const QStringList header{QStringLiteral("Source file"),   QStringLiteral("Output file"),
                                    QStringLiteral("Original LUFS"), QStringLiteral("Final LUFS"),
                                    QStringLiteral("Applied gain"),  QStringLiteral("True peak"),
                                    QStringLiteral("Status")};
    return header;
}

QString row(const QStringList &fields)
{
    QStringList escapedFields;
    escapedFields.reserve(fields.size());
    for (const QString &field : fields)
        escapedFields.append(escaped(field));
    return escapedFields.join(u',');
}

QString makeCSV(const QList<ProcessingResult> &results)
{
    const QString lineEnd = QStringLiteral("\r\n");
    QString text = row(columns()) + lineEnd;
    for (const ProcessingResult &result : results) {
        text += row({displayedPath(result.sourceFileName), displayedPath(result.outputFileName),
                     figure(result.originalLUFS), figure(result.finalLUFS),
                     figure(result.appliedGain, true), figure(result.truePeak),
                     ProcessingOutcomes::rawValue(result.outcome)}) +
                lineEnd;
    }
    return text;
}

std::optional<QString> write(const QString &path, const QList<ProcessingResult> &results)
{
    const QByteArray bytes = makeCSV(results).toUtf8();
    const QByteArray target = encodedPath(path);
    const qsizetype slash = target.lastIndexOf('/');
    const QByteArray temporary = target.left(slash + 1) + ".tbreport-" +
                                 QByteArray::number(::getpid()) + '-' +
                                 QByteArray::number(QRandomGenerator::global()->generate(), 16);
    const auto failed = [&temporary, &path](int error, int fd) -> QString {
        if (fd >= 0)
            ::close(fd);
        ::unlink(temporary.constData());
        return systemErrorAt(error, path);
    };
    struct stat existing
    {};
    if (::stat(target.constData(), &existing) == 0 && S_ISDIR(existing.st_mode))
        return systemErrorAt(EISDIR, path);
    const int fd = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd < 0)
        return systemErrorAt(errno, path);
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count = ::write(fd, bytes.constData() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return failed(count < 0 ? errno : ENOSPC, fd);
        done += count;
    }
    // A disk that fills up may say so only now.
    if (::fsync(fd) != 0)
        return failed(errno, fd);
    if (::close(fd) != 0)
        return failed(errno, -1);
    if (::rename(temporary.constData(), target.constData()) != 0)
        return failed(errno, -1);
    return std::nullopt;
}

bool looksLikeAudio(const QString &path)
{
    const QString name = fileNameOf(path);
    if (SourceAudioFormats::fromFileName(name) || SourceAudioFormats::otherAudioExtension(name))
        return true;
    const int fd = ::open(encodedPath(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return false;
    char head[12] = {};
    const ssize_t got = ::read(fd, head, sizeof head);
    ::close(fd);
    if (got < 4)
        return false;
    const QByteArray start(head, got);
    for (const char *magic :
         {"RIFF", "RF64", "FORM", "caff", "fLaC", "OggS", "ID3", "MAC ", "wvpk"})
        if (start.startsWith(magic))
            return true;
    const bool mpegFrame = static_cast<unsigned char>(head[0]) == 0xFF &&
                           (static_cast<unsigned char>(head[1]) & 0xE0) == 0xE0;
    return mpegFrame || (got >= 8 && start.mid(4, 4) == "ftyp");
}

} // namespace CSVReportService

// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/StandardPath.h"

#include <QDir>

namespace {

constexpr char16_t keptByteBase = 0xDC00;

bool isKeptByte(QChar c)
{
    return c.unicode() >= 0xDC80 && c.unicode() <= 0xDCFF;
}

void appendUtf8(QByteArray &out, char32_t code)
{
    if (code < 0x80) {
        out.append(static_cast<char>(code));
    } else if (code < 0x800) {
        out.append(static_cast<char>(0xC0 | (code >> 6)));
        out.append(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
        out.append(static_cast<char>(0xE0 | (code >> 12)));
        out.append(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.append(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
        out.append(static_cast<char>(0xF0 | (code >> 18)));
        out.append(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        out.append(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.append(static_cast<char>(0x80 | (code & 0x3F)));
    }
}

// The length of the valid UTF-8 sequence at `at`, or 0 (RFC 3629: no
// overlong forms, no surrogates, nothing past U+10FFFF).
int validSequenceAt(const QByteArray &bytes, qsizetype at, char32_t &code)
{
    const auto byte = [&bytes](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = byte(at);
    int length = 0;
    char32_t minimum = 0;
    if (lead < 0x80) {
        code = lead;
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, code = lead & 0x1F, minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, code = lead & 0x0F, minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, code = lead & 0x07, minimum = 0x10000;
    } else {
        return 0;
    }
    if (at + length > bytes.size())
        return 0;
    for (int i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return 0;
        code = (code << 6) | (byte(at + i) & 0x3F);
    }
    if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return 0;
    return length;
}

} // namespace

QString standardizedPath(const QString &path)
{
    if (path.isEmpty())
        return {};
    return QDir::cleanPath(QDir::isAbsolutePath(path) ? path
                                                      : QDir::current().absoluteFilePath(path));
}

QString fileNameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString numberedPath(const QString &path, qint64 n)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    const QString folder = path.left(slash + 1);
    const QString name = path.mid(slash + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    const bool hasExtension = dot > 0 && dot < name.size() - 1;
    const QString base = hasExtension ? name.left(dot) : name;
    const QString extension = hasExtension ? name.mid(dot) : QString();
    return folder + base + u' ' + QString::number(n) + extension;
}

QByteArray encodedPath(const QString &path)
{
    QByteArray out;
    out.reserve(path.size() + path.size() / 4);
    for (qsizetype i = 0; i < path.size(); ++i) {
        const QChar c = path.at(i);
        if (c.isHighSurrogate() && i + 1 < path.size() && path.at(i + 1).isLowSurrogate()) {
            appendUtf8(out, QChar::surrogateToUcs4(c, path.at(i + 1)));
            ++i;
        } else if (isKeptByte(c)) {
            out.append(static_cast<char>(c.unicode() - keptByteBase));
        } else if (c.isSurrogate()) {
            appendUtf8(out, QChar::ReplacementCharacter);
        } else {
            appendUtf8(out, c.unicode());
        }
    }
    return out;
}

QString decodedPath(const QByteArray &bytes)
{
    QString out;
    out.reserve(bytes.size());
    for (qsizetype i = 0; i < bytes.size();) {
        char32_t code = 0;
        const int length = validSequenceAt(bytes, i, code);
        if (length == 0) {
            out.append(QChar(char16_t(keptByteBase + static_cast<unsigned char>(bytes[i]))));
            ++i;
            continue;
        }
        if (code < 0x10000) {
            out.append(QChar(char16_t(code)));
        } else {
            out.append(QChar(QChar::highSurrogate(code)));
            out.append(QChar(QChar::lowSurrogate(code)));
        }
        i += length;
    }
    return out;
}

QString displayedPath(const QString &path)
{
    QString shown = path;
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const QChar c = shown.at(i);
        if (c.isHighSurrogate() && i + 1 < shown.size() && shown.at(i + 1).isLowSurrogate())
            ++i;
        else if (c.isSurrogate())
            shown[i] = QChar::ReplacementCharacter;
    }
    return shown;
}

QString localPathOf(const QUrl &url)
{
    return decodedPath(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()));
}

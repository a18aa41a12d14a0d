// SPDX-License-Identifier: GPL-3.0-or-later
//
// Any fields written as a report row read back as the same fields with a
// plain RFC 4180 reader: quoting and escaping never lose or add a character.
#include "files/CSVReportService.h"

#include <cstdint>
#include <cstdlib>

namespace {

QStringList readRow(const QString &line)
{
    QStringList fields;
    QString field;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (quoted) {
            if (c == u'"' && i + 1 < line.size() && line.at(i + 1) == u'"') {
                field.append(u'"');
                ++i;
            } else if (c == u'"') {
                quoted = false;
            } else {
                field.append(c);
            }
        } else if (c == u'"') {
            quoted = true;
        } else if (c == u',') {
            fields.append(field);
            field.clear();
        } else {
            field.append(c);
        }
    }
    fields.append(field);
    return fields;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Fields are separated by NUL in the input, so they may hold anything else.
    const QStringList fields =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size))
            .split(QChar(0));
    if (readRow(CSVReportService::row(fields)) != fields)
        std::abort();
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/CSVReportService.h"

#include "engine/NumberFormat.h"

#include <QSaveFile>

#include <cmath>

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
        text += row({result.sourceFileName, result.outputFileName, figure(result.originalLUFS),
                     figure(result.finalLUFS), figure(result.appliedGain, true),
                     figure(result.truePeak), ProcessingOutcomes::rawValue(result.outcome)}) +
                lineEnd;
    }
    return text;
}

std::optional<QString> write(const QString &path, const QList<ProcessingResult> &results)
{
    // All or nothing: an existing report is replaced only by a complete one.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    const QByteArray bytes = makeCSV(results).toUtf8();
    if (file.write(bytes) != bytes.size() || !file.commit())
        return file.errorString();
    return std::nullopt;
}

} // namespace CSVReportService

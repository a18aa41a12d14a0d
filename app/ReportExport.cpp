// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ReportExport.h"

#include "files/CSVReportService.h"
#include "localization/L.h"
#include "model/StandardPath.h"

namespace ReportExport {

std::optional<QString> refusal(const QString &path, const QList<AudioFileItem> &queue)
{
    const QString target = standardizedPath(path);
    bool isSource = false;
    for (const AudioFileItem &item : queue)
        isSource = isSource || standardizedPath(item.sourcePath) == target;
    if (isSource || CSVReportService::looksLikeAudio(target))
        return L::text(L::ReportOverAudioRefused, displayedPath(target));
    return std::nullopt;
}

std::optional<QString> write(const QString &path, const QList<AudioFileItem> &queue)
{
    if (const auto refused = refusal(path, queue))
        return refused;
    QList<ProcessingResult> results;
    for (const AudioFileItem &item : queue) {
        if (item.result)
            results.append(*item.result);
    }
    if (const auto problem = CSVReportService::write(path, results))
        return L::text(L::ReportNotSaved, *problem);
    return std::nullopt;
}

} // namespace ReportExport

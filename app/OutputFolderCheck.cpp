// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OutputFolderCheck.h"

#include "localization/L.h"
#include "model/StandardPath.h"

namespace OutputFolderCheck {

std::optional<QString> warning(const std::optional<QString> &folder,
                               const QList<AudioFileItem> &queue, const OutputPathResolving &paths)
{
    if (!folder)
        return std::nullopt;
    QStringList sources;
    sources.reserve(queue.size());
    for (const AudioFileItem &item : queue)
        sources.append(item.sourcePath);
    if (paths.isInsideSourceTree(standardizedPath(*folder), sources))
        return L::text(L::WarnInsideSource);
    if (!paths.isWritable(*folder))
        return L::text(L::WarnNotWritable);
    return std::nullopt;
}

} // namespace OutputFolderCheck

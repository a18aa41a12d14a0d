// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "files/FileImporting.h"

#include <memory>

class FolderScanning;

class FileImportService final : public FileImporting
{
public:
    explicit FileImportService(std::shared_ptr<const FolderScanning> folderScanner);

    ImportSummary importPaths(const QStringList &paths,
                              const QList<AudioFileItem> &existing) const override;

private:
    std::shared_ptr<const FolderScanning> m_folderScanner;
};

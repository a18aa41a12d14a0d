// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppServices.h"

#include "engine/FFmpegRunner.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/ResourceLocator.h"
#include "files/FileImportService.h"
#include "files/FolderScanner.h"
#include "files/NoFilePanels.h"
#include "files/OutputPathService.h"

#include <QThread>

#include <algorithm>

std::shared_ptr<const FileImporting> AppServices::standardImport()
{
    return std::make_shared<FileImportService>(std::make_shared<FolderScanner>());
}

std::shared_ptr<FilePanelPresenting> AppServices::noPanels()
{
    return std::make_shared<NoFilePanels>();
}

std::shared_ptr<const OutputPathResolving> AppServices::standardOutputPaths()
{
    return std::make_shared<OutputPathService>();
}

std::shared_ptr<const LoudnessAnalyzing> AppServices::bundledAnalysis()
{
    return std::make_shared<LoudnessAnalysisService>(
        std::make_shared<FFmpegRunner>(ResourceLocator().ffmpegPath()));
}

std::shared_ptr<const LoudnessProcessing> AppServices::bundledProcessing()
{
    const std::optional<QString> ffmpeg = ResourceLocator().ffmpegPath();
    return std::make_shared<LoudnessProcessingService>(
        std::make_shared<FFmpegRunner>(ffmpeg),
        std::make_shared<LoudnessAnalysisService>(std::make_shared<FFmpegRunner>(ffmpeg)));
}

int AppServices::defaultParallelJobs()
{
    return std::clamp(QThread::idealThreadCount(), 3, 16);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/FolderRevealing.h"
#include "app/RunNotifying.h"
#include "app/SupportPresenting.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/LoudnessProcessing.h"
#include "files/FileImporting.h"
#include "files/FilePanelPresenting.h"
#include "files/OutputFolderBookmarkStore.h"
#include "files/OutputPathResolving.h"
#include "files/SettingsStore.h"

#include <memory>

// Everything the controller works through. Each member starts as the
// application's own (the folder scanner, the bundled ffmpeg); a front end or a
// test names only what it replaces:
//     AppServices{.panelPresenter = panels, .analysisService = analyzer}
// Some defaults do nothing on purpose: the output folder and the settings are
// remembered only in stores given here (the window gives the user's
// preferences file), and without a revealer or a support window nothing opens.
struct AppServices
{
    std::shared_ptr<const FileImporting> importService = standardImport();
    // No screen: every dialog answers "cancelled".
    std::shared_ptr<FilePanelPresenting> panelPresenter = noPanels();
    std::shared_ptr<const OutputPathResolving> outputPathService = standardOutputPaths();
    OutputFolderBookmarkStore bookmarkStore{nullptr};
    SettingsStore settingsStore{nullptr};
    std::shared_ptr<const LoudnessAnalyzing> analysisService = bundledAnalysis();
    std::shared_ptr<const LoudnessProcessing> processingService = bundledProcessing();
    std::shared_ptr<SupportPresenting> supportPresenter;
    std::shared_ptr<FolderRevealing> revealer;
    // Absent: a run ends silently.
    std::shared_ptr<RunNotifying> notifier;
    // How many files are measured at once, and how many written at once.
    int parallelJobs = defaultParallelJobs();

    static std::shared_ptr<const FileImporting> standardImport();
    static std::shared_ptr<FilePanelPresenting> noPanels();
    static std::shared_ptr<const OutputPathResolving> standardOutputPaths();
    // Measuring and processing with the bundled ffmpeg, each on runners of its own.
    static std::shared_ptr<const LoudnessAnalyzing> bundledAnalysis();
    static std::shared_ptr<const LoudnessProcessing> bundledProcessing();
    // One ffmpeg per core, at least 3 (each job spends much of its time
    // reading and writing) and at most 16.
    static int defaultParallelJobs();
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "localization/AppLanguage.h"
#include "model/OutputFormatMode.h"
#include "model/ProcessingStatus.h"
#include "model/SampleRateMode.h"

#include <QString>

#include <optional>

// Every text the user reads, in the interface language of the moment (the
// Qt catalogue that LanguageManager has installed). Counted texts take their
// plural forms from the catalogues; numbers are plain decimal, no grouping.
namespace L {

// The string table.
QString appSubtitle();
QString processingComplete();
QString files(int n);
QString folders(int n);
QString filesProcessed(int n);
QString reachedTarget(int n);
QString converted(int n);
QString peakLimited(int n);
QString failedCount(int n);
QString revealOutputFolder();
QString processNewFiles();
QString panelSelectFiles();
QString panelSelectFolder();
QString panelChooseDestination();
QString dropHere();
QString filesLoaded(int n);
QString individualFiles();
QString analyzeLoudness();
QString processFiles(int n);
QString filesReady(int n);
QString analyzingProgress(int done, int total);
QString processingProgress(int done, int total);
QString noOutputFolder();
QString added(int n);
QString alreadyInQueue(int n);
QString unsupportedIgnored(int n);
QString normalizeLoudness();
QString truePeakCeiling();
QString noFolderSelected();
QString revealWhenComplete();
QString noFilesInQueue();
QString removeFromQueue();
QString processSelected(int n);
QString ofFiles(int done, int total);
QString warnInsideSource();
QString warnNotWritable();
QString supportMenuItem();
QString supportTitle();
QString supportBody();
QString supportChannelButton();

// Presets, modes and statuses.
// The display name of a built-in preset; absent for an id that is not one.
std::optional<QString> presetName(QStringView presetId);
QString sampleRateLabel(SampleRateMode mode);
QString outputFormatLabel(OutputFormatMode mode);
QString sampleRateHeading();
QString bitDepthHeading();
QString outputFormatHeading();
// The badge's word for a status ("Ready", "Failed", ...).
QString statusName(ProcessingStatus::Kind kind);

// Messages for a file that could not be written; the name is quoted as is.
QString damagedMessage(const QString &fileName);
QString diskFullMessage(const QString &fileName);
QString permissionMessage(const QString &fileName);
QString writeFailedMessage(const QString &fileName);
QString readOnlyMessage(const QString &fileName);
QString pathTooLongMessage(const QString &fileName);
QString sourceMissingMessage(const QString &fileName);
QString sourceUnreadableMessage(const QString &fileName);
QString tookTooLongMessage(const QString &fileName);
// A conversion into integer PCM that clipped: the peak ("+2.3") and the depth written ("24-bit").
QString clippedWarning(const QString &peak, const QString &depth);
// What the encoder's limits changed, one sentence each.
QString sampleRateChanged(int from, int to, const QString &format);
QString channelsChanged(int from, int to, const QString &format);
// What the source carried that the output format drops ("bext", "iXML", "markers",
// "loops"), or "damaged" for a chunk list that could not be read.
QString notKept(const QStringList &kinds, const QString &format);
// The bundled ffmpeg is missing or cannot start: the installation, not the files.
QString installationProblem(const QString &reason);
QString reportOverAudioRefused(const QString &path);
QString sameFileSkippedMessage(const QString &fileName);
QString cancelledMessage();
QString reportNotSaved(const QString &reason);

// Window, screens and sheets.
QString selectFiles();
QString selectFolder();
QString addFiles();
QString addFolder();
QString removeSelected();
QString clearQueue();
QString columnFile();
QString columnSource();
QString columnLoudness();
QString columnOutput();
QString columnStatus();
QString selectAll();
QString processingTitle();
QString cancel();
QString exportReport();
QString details();
QString done();
QString close();
QString version();
QString about();
QString licenses();
QString viewLicense();
QString hideLicense();
QString leaveTip();
QString language();
// A language as its menu entry shows it: "System" in the interface language,
// the others in their own ("English", "Русский").
QString languageName(AppLanguage language);
QString choose();
QString processFilesNone();
QString complete();
// Settings panels, sheets and tooltips.
QString targetHeading();
QString presetLabel();
QString customTarget();
QString outputFolderHeading();
QString chooseFolder();
QString addPrefix();
QString copyright();
QString ffmpegSummary();
QString lameSummary();
// "7.1.5 — LGPL v3 build (GPL components disabled)".
QString ffmpegBuildDescription(const QString &version);
QString dropToAdd();
QString showDetails();

// File dialog filters: "Audio files (*.wav ...)".
QString audioFilesFilter();

// The command-line front end.
QString cliDescription();
QString cliUsage(const QString &program);
QString cliOutputOption();
QString cliPresetOption(const QString &choices);
QString cliTargetOption();
QString cliCeilingOption();
QString cliNoNormalizeOption();
QString cliFormatOption();
QString cliSampleRateOption();
QString cliBitDepthOption();
QString cliPrefixOption();
QString cliReportOption();
QString cliAnalyzeOnlyOption();
QString cliJsonOption();
QString cliLanguageOption();
QString cliPathsArgument();
QString cliNeedsOutput();
QString cliNeedsPaths();
QString cliInvalidValue(const QString &option, const QString &value);
QString cliNothingImported();
QString cliReportWritten(const QString &path);
QString cliNoSuchPath(const QString &path);
QString cliWarning(const QString &text);
// "-20.5 LUFS, peak -3.1 dBTP, range 6.2 LU"; the figures come formatted.
QString cliMeasured(const QString &loudness, const QString &peak, const QString &range);
QString cliNotMeasured();
// "-20.5 → -14.0 LUFS, gain +6.5 dB, peak -1.0 dBTP".
QString cliFigures(const QString &original, const QString &final, const QString &gain,
                   const QString &peak);

} // namespace L

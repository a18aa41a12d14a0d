// SPDX-License-Identifier: GPL-3.0-or-later
#include "localization/L.h"

#include <QCoreApplication>

namespace L {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("L", text);
}

// The catalogue picks the plural form for n; %n becomes n in plain digits.
QString translated(const char *text, int n)
{
    return QCoreApplication::translate("L", text, nullptr, n);
}

} // namespace

QString appSubtitle()
{
    return translated(QT_TRANSLATE_NOOP("L", "Batch loudness normalization and audio conversion"));
}

QString processingComplete()
{
    return translated(QT_TRANSLATE_NOOP("L", "Processing Complete"));
}

QString files(int n)
{
    return translated(QT_TRANSLATE_N_NOOP("L", "%n file(s)"), n);
}

QString folders(int n)
{
    return translated(QT_TRANSLATE_N_NOOP("L", "%n folder(s)"), n);
}

QString filesProcessed(int n)
{
    return translated(QT_TRANSLATE_N_NOOP("L", "%n file(s) processed"), n);
}

QString reachedTarget(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 reached target loudness")).arg(n);
}

QString converted(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 converted")).arg(n);
}

QString peakLimited(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 limited by true peak")).arg(n);
}

QString failedCount(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 failed")).arg(n);
}

QString revealOutputFolder()
{
    return translated(QT_TRANSLATE_NOOP("L", "Reveal Output Folder"));
}

QString processNewFiles()
{
    return translated(QT_TRANSLATE_NOOP("L", "Process New Files"));
}

QString panelSelectFiles()
{
    return translated(QT_TRANSLATE_NOOP("L", "Select audio files to add to the queue"));
}

QString panelSelectFolder()
{
    return translated(QT_TRANSLATE_NOOP("L", "Select a folder to scan for audio files"));
}

QString panelChooseDestination()
{
    return translated(QT_TRANSLATE_NOOP("L", "Choose where prepared audio will be saved"));
}

QString dropHere()
{
    return translated(QT_TRANSLATE_NOOP("L", "Drop audio files or folders here"));
}

QString filesLoaded(int n)
{
    return translated(QT_TRANSLATE_N_NOOP("L", "%n file(s) loaded"), n);
}

QString individualFiles()
{
    return translated(QT_TRANSLATE_NOOP("L", "Individual files"));
}

QString analyzeLoudness()
{
    return translated(QT_TRANSLATE_NOOP("L", "Analyze Loudness"));
}

QString processFiles(int n)
{
    return translated(QT_TRANSLATE_N_NOOP("L", "Process %n File(s)"), n);
}

QString filesReady(int n)
{
    return translated(QT_TRANSLATE_N_NOOP("L", "%n file(s) ready"), n);
}

QString analyzingProgress(int done, int total)
{
    return translated(QT_TRANSLATE_NOOP("L", "Analyzing loudness\u2026 %1/%2"))
        .arg(done)
        .arg(total);
}

QString processingProgress(int done, int total)
{
    return translated(QT_TRANSLATE_NOOP("L", "Processing %1 of %2")).arg(done).arg(total);
}

QString noOutputFolder()
{
    return translated(QT_TRANSLATE_NOOP("L", "No output folder selected"));
}

QString added(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 added")).arg(n);
}

QString alreadyInQueue(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 already in queue")).arg(n);
}

QString unsupportedIgnored(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 unsupported ignored")).arg(n);
}

QString normalizeLoudness()
{
    return translated(QT_TRANSLATE_NOOP("L", "Normalize loudness"));
}

QString truePeakCeiling()
{
    return translated(QT_TRANSLATE_NOOP("L", "True Peak Ceiling"));
}

QString noFolderSelected()
{
    return translated(QT_TRANSLATE_NOOP("L", "No folder selected"));
}

QString revealWhenComplete()
{
    return translated(QT_TRANSLATE_NOOP("L", "Reveal in file manager when complete"));
}

QString noFilesInQueue()
{
    return translated(QT_TRANSLATE_NOOP("L", "No files in queue"));
}

QString removeFromQueue()
{
    return translated(QT_TRANSLATE_NOOP("L", "Remove from queue"));
}

QString processSelected(int n)
{
    return translated(QT_TRANSLATE_NOOP("L", "Process Selected (%1)")).arg(n);
}

QString ofFiles(int done, int total)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 of %2 files")).arg(done).arg(total);
}

QString warnInsideSource()
{
    return translated(
        QT_TRANSLATE_NOOP("L", "The output folder overlaps your imported files. Exports will "
                               "be kept separate, but choosing a folder outside the source "
                               "is recommended."));
}

QString warnNotWritable()
{
    return translated(QT_TRANSLATE_NOOP(
        "L", "Tonbrook can't write to this folder. Choose a different destination."));
}

QString supportMenuItem()
{
    return translated(QT_TRANSLATE_NOOP("L", "Support the project"));
}

QString supportTitle()
{
    return translated(QT_TRANSLATE_NOOP("L", "Thank you for using Tonbrook"));
}

QString supportBody()
{
    return translated(QT_TRANSLATE_NOOP(
        "L",
        "Tonbrook is a free tool by Quillmere Tools. If it helps your work, you can support its "
        "development with a tip or by subscribing to the channel. It's entirely optional \u2014 "
        "and it helps new tools get made."));
}

QString supportChannelButton()
{
    return translated(QT_TRANSLATE_NOOP("L", "Subscribe to channel"));
}

std::optional<QString> presetName(QStringView presetId)
{
    if (presetId == u"theatre_ambience")
        return translated(QT_TRANSLATE_NOOP("L", "Theatre Ambience"));
    if (presetId == u"active_ambience")
        return translated(QT_TRANSLATE_NOOP("L", "Active Ambience"));
    if (presetId == u"music_playback")
        return translated(QT_TRANSLATE_NOOP("L", "Music / Playback"));
    if (presetId == u"voice_dialogue")
        return translated(QT_TRANSLATE_NOOP("L", "Voice / Dialogue"));
    if (presetId == u"podcast")
        return translated(QT_TRANSLATE_NOOP("L", "Podcast"));
    if (presetId == u"streaming")
        return translated(QT_TRANSLATE_NOOP("L", "Streaming"));
    if (presetId == u"custom")
        return translated(QT_TRANSLATE_NOOP("L", "Custom"));
    return std::nullopt;
}

QString sampleRateLabel(SampleRateMode mode)
{
    switch (mode) {
    case SampleRateMode::PreserveOriginal:
        return translated(QT_TRANSLATE_NOOP("L", "Preserve original"));
    case SampleRateMode::Rate44100:
        return QStringLiteral("44.1 kHz");
    case SampleRateMode::Rate48000:
        return QStringLiteral("48 kHz");
    }
    return {};
}

QString outputFormatLabel(OutputFormatMode mode)
{
    if (mode == OutputFormatMode::KeepOriginal)
        return translated(QT_TRANSLATE_NOOP("L", "Keep original"));
    return OutputFormatModes::rawValue(mode).toUpper();
}

QString sampleRateHeading()
{
    return translated(QT_TRANSLATE_NOOP("L", "Sample Rate"));
}

QString bitDepthHeading()
{
    return translated(QT_TRANSLATE_NOOP("L", "Bit Depth"));
}

QString outputFormatHeading()
{
    return translated(QT_TRANSLATE_NOOP("L", "Output Format"));
}

QString statusName(ProcessingStatus::Kind kind)
{
    switch (kind) {
    case ProcessingStatus::Kind::Ready:
        return translated(QT_TRANSLATE_NOOP("L", "Ready"));
    case ProcessingStatus::Kind::Analyzing:
        return translated(QT_TRANSLATE_NOOP("L", "Analyzing"));
    case ProcessingStatus::Kind::Processing:
        return processingTitle();
    case ProcessingStatus::Kind::Done:
        return done();
    case ProcessingStatus::Kind::Warning:
        return translated(QT_TRANSLATE_NOOP("L", "Warning"));
    case ProcessingStatus::Kind::Failed:
        return translated(QT_TRANSLATE_NOOP("L", "Failed"));
    case ProcessingStatus::Kind::Cancelled:
        return translated(QT_TRANSLATE_NOOP("L", "Cancelled"));
    }
    return {};
}

QString damagedMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP(
                          "L", "Could not process \u201c%1\u201d.\nThe file may be damaged or "
                               "use an unsupported codec."))
        .arg(fileName);
}

QString diskFullMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP(
                          "L", "Could not save \u201c%1\u201d.\nThe disk is full \u2014 free "
                               "up space and try again."))
        .arg(fileName);
}

QString permissionMessage(const QString &fileName)
{
    return translated(
               QT_TRANSLATE_NOOP("L", "Could not write \u201c%1\u201d.\nTonbrook doesn\u2019t have "
                                      "permission for that folder."))
        .arg(fileName);
}

QString writeFailedMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP(
                          "L", "Could not save \u201c%1\u201d.\nCheck that the output folder "
                               "is writable and has enough free space."))
        .arg(fileName);
}

QString readOnlyMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP("L", "Could not save \u201c%1\u201d.\nThe output folder "
                                             "is on a read-only disk."))
        .arg(fileName);
}

QString pathTooLongMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP(
                          "L", "Could not save \u201c%1\u201d.\nThe output path is too long "
                               "for the disk \u2014 choose an output folder with a shorter path."))
        .arg(fileName);
}

QString sourceMissingMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP("L", "Could not read \u201c%1\u201d.\nThe file was "
                                             "moved or deleted after it was added."))
        .arg(fileName);
}

QString sourceUnreadableMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP("L",
                                        "Could not read \u201c%1\u201d.\nTonbrook doesn\u2019t "
                                        "have permission to read that file."))
        .arg(fileName);
}

QString tookTooLongMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP(
                          "L", "Could not process \u201c%1\u201d.\nReading it took far longer "
                               "than a file of its size should; its header may be wrong."))
        .arg(fileName);
}

QString clippedWarning(const QString &peak, const QString &depth)
{
    return translated(QT_TRANSLATE_NOOP("L",
                                        "Peaks reach %1 dBTP, above full scale: they are "
                                        "clipped in %2 PCM. Choose 32-bit float to keep them."))
        .arg(peak, depth);
}

QString sampleRateChanged(int from, int to, const QString &format)
{
    const auto kilohertz = [](int hertz) { return QString::number(hertz / 1000.0); };
    return translated(QT_TRANSLATE_NOOP("L", "Written at %2 kHz instead of %1 kHz: %3 cannot take "
                                             "%1 kHz."))
        .arg(kilohertz(from), kilohertz(to), format);
}

QString channelsChanged(int from, int to, const QString &format)
{
    return translated(QT_TRANSLATE_NOOP("L", "Downmixed from %1 channels to %2: %3 takes at "
                                             "most %2."))
        .arg(from)
        .arg(to)
        .arg(format);
}

QString notKept(const QStringList &kinds, const QString &format)
{
    if (kinds.contains(QStringLiteral("damaged")))
        return translated(QT_TRANSLATE_NOOP("L", "The source's chunk list is damaged: its "
                                                 "timecode, markers and other chunks were not "
                                                 "carried over."));
    QStringList names;
    for (const QString &kind : kinds)
        names.append(kind == u"bext"      ? translated(QT_TRANSLATE_NOOP("L", "timecode (bext)"))
                     : kind == u"markers" ? translated(QT_TRANSLATE_NOOP("L", "markers"))
                     : kind == u"loops"   ? translated(QT_TRANSLATE_NOOP("L", "loops"))
                                          : kind);
    return translated(QT_TRANSLATE_NOOP("L", "Not kept in %1: %2."))
        .arg(format, names.join(QStringLiteral(", ")));
}

QString installationProblem(const QString &reason)
{
    return translated(QT_TRANSLATE_NOOP("L", "Tonbrook\u2019s own ffmpeg is missing or cannot "
                                             "start (%1). Nothing was processed: reinstall "
                                             "Tonbrook."))
        .arg(reason);
}

QString reportOverAudioRefused(const QString &path)
{
    return translated(QT_TRANSLATE_NOOP("L", "The report is not written over \u201c%1\u201d: "
                                             "it is an audio file. Choose another name."))
        .arg(path);
}

QString sameFileSkippedMessage(const QString &fileName)
{
    return translated(QT_TRANSLATE_NOOP("L",
                                        "Skipped \u201c%1\u201d to avoid overwriting the original "
                                        "file.\nChoose an output folder outside the source."))
        .arg(fileName);
}

QString cancelledMessage()
{
    return translated(QT_TRANSLATE_NOOP("L", "Cancelled."));
}

QString reportNotSaved(const QString &reason)
{
    return translated(QT_TRANSLATE_NOOP("L", "Could not save the report: %1")).arg(reason);
}

QString selectFiles()
{
    return translated(QT_TRANSLATE_NOOP("L", "Select Files"));
}

QString selectFolder()
{
    return translated(QT_TRANSLATE_NOOP("L", "Select Folder"));
}

QString addFiles()
{
    return translated(QT_TRANSLATE_NOOP("L", "Add Files"));
}

QString addFolder()
{
    return translated(QT_TRANSLATE_NOOP("L", "Add Folder"));
}

QString removeSelected()
{
    return translated(QT_TRANSLATE_NOOP("L", "Remove Selected"));
}

QString clearQueue()
{
    return translated(QT_TRANSLATE_NOOP("L", "Clear Queue"));
}

QString columnFile()
{
    return translated(QT_TRANSLATE_NOOP("L", "FILE"));
}

QString columnSource()
{
    return translated(QT_TRANSLATE_NOOP("L", "SOURCE"));
}

QString columnLoudness()
{
    return translated(QT_TRANSLATE_NOOP("L", "LOUDNESS"));
}

QString columnOutput()
{
    return translated(QT_TRANSLATE_NOOP("L", "OUTPUT"));
}

QString columnStatus()
{
    return translated(QT_TRANSLATE_NOOP("L", "STATUS"));
}

QString selectAll()
{
    return translated(QT_TRANSLATE_NOOP("L", "Select all"));
}

QString processingTitle()
{
    return translated(QT_TRANSLATE_NOOP("L", "Processing"));
}

QString cancel()
{
    return translated(QT_TRANSLATE_NOOP("L", "Cancel"));
}

QString exportReport()
{
    return translated(QT_TRANSLATE_NOOP("L", "Export Report"));
}

QString details()
{
    return translated(QT_TRANSLATE_NOOP("L", "Details"));
}

QString done()
{
    return translated(QT_TRANSLATE_NOOP("L", "Done"));
}

QString close()
{
    return translated(QT_TRANSLATE_NOOP("L", "Close"));
}

QString version()
{
    return translated(QT_TRANSLATE_NOOP("L", "Version"));
}

QString about()
{
    return translated(QT_TRANSLATE_NOOP("L", "About"));
}

QString licenses()
{
    return translated(QT_TRANSLATE_NOOP("L", "Licenses"));
}

QString viewLicense()
{
    return translated(QT_TRANSLATE_NOOP("L", "View license"));
}

QString hideLicense()
{
    return translated(QT_TRANSLATE_NOOP("L", "Hide license"));
}

QString leaveTip()
{
    return translated(QT_TRANSLATE_NOOP("L", "Leave a tip"));
}

QString language()
{
    return translated(QT_TRANSLATE_NOOP("L", "Language"));
}

QString languageName(AppLanguage language)
{
    switch (language) {
    case AppLanguage::System:
        return translated(QT_TRANSLATE_NOOP("L", "System"));
    case AppLanguage::En:
        return QStringLiteral("English");
    case AppLanguage::Ru:
        return QStringLiteral("\u0420\u0443\u0441\u0441\u043a\u0438\u0439");
    }
    return {};
}

QString choose()
{
    return translated(QT_TRANSLATE_NOOP("L", "Choose"));
}

QString processFilesNone()
{
    return translated(QT_TRANSLATE_NOOP("L", "Process Files"));
}

QString complete()
{
    return translated(QT_TRANSLATE_NOOP("L", "Complete"));
}

QString targetHeading()
{
    return translated(QT_TRANSLATE_NOOP("L", "Target Loudness"));
}

QString presetLabel()
{
    return translated(QT_TRANSLATE_NOOP("L", "Preset"));
}

QString customTarget()
{
    return translated(QT_TRANSLATE_NOOP("L", "Custom target"));
}

QString outputFolderHeading()
{
    return translated(QT_TRANSLATE_NOOP("L", "Output Folder"));
}

QString chooseFolder()
{
    return translated(QT_TRANSLATE_NOOP("L", "Choose\u2026"));
}

QString addPrefix()
{
    return translated(QT_TRANSLATE_NOOP("L", "Add prefix"));
}

QString copyright()
{
    return translated(QT_TRANSLATE_NOOP(
        "L", "\u00a9 2026 Quillmere Tools. Free software under the GNU GPL, version 3 or later."));
}

QString ffmpegSummary()
{
    return translated(QT_TRANSLATE_NOOP(
        "L", "Loudness analysis and audio encoding. Built with --disable-gpl --enable-version3."));
}

QString lameSummary()
{
    return translated(
        QT_TRANSLATE_NOOP("L", "MP3 encoder (libmp3lame), statically linked into FFmpeg."));
}

QString ffmpegBuildDescription(const QString &version)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 \u2014 LGPL v3 build (GPL components disabled)"))
        .arg(version);
}

QString dropToAdd()
{
    return translated(QT_TRANSLATE_NOOP("L", "Drop to add to the queue"));
}

QString showDetails()
{
    return translated(QT_TRANSLATE_NOOP("L", "Show details"));
}

QString audioFilesFilter()
{
    return translated(QT_TRANSLATE_NOOP("L", "Audio files"));
}

QString cliDescription()
{
    return translated(QT_TRANSLATE_NOOP(
        "L", "Measures audio files and writes them at one loudness, as the Tonbrook window does."));
}

QString cliUsage(const QString &program)
{
    return translated(QT_TRANSLATE_NOOP("L", "Usage: %1 [options] PATH...")).arg(program);
}

QString cliOutputOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Output folder (required unless --analyze-only)."));
}

QString cliPresetOption(const QString &choices)
{
    return translated(QT_TRANSLATE_NOOP("L", "Loudness preset: %1.")).arg(choices);
}

QString cliTargetOption()
{
    return translated(
        QT_TRANSLATE_NOOP("L", "Custom target loudness, -70 to -5; selects the custom preset."));
}

QString cliCeilingOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "True-peak ceiling, -9 to 0 (default -1.0)."));
}

QString cliNoNormalizeOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Convert only; do not change the loudness."));
}

QString cliFormatOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Output format: keepOriginal, wav, aiff, mp3, caf."));
}

QString cliSampleRateOption()
{
    return translated(
        QT_TRANSLATE_NOOP("L", "Sample rate: preserveOriginal, rate44100, rate48000."));
}

QString cliBitDepthOption()
{
    return translated(QT_TRANSLATE_NOOP(
        "L", "Bit depth of PCM output: 16, 24 or 32 (32-bit float) (default 24)."));
}

QString cliPrefixOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Put this text before every output file name."));
}

QString cliReportOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Write the run's CSV report to this file."));
}

QString cliAnalyzeOnlyOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Measure and print; write nothing."));
}

QString cliJsonOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Print one JSON object per file instead of text."));
}

QString cliLanguageOption()
{
    return translated(QT_TRANSLATE_NOOP("L", "Language of this run: system, en or ru."));
}

QString cliPathsArgument()
{
    return translated(QT_TRANSLATE_NOOP("L", "Audio files and folders to process."));
}

QString cliNeedsOutput()
{
    return translated(
        QT_TRANSLATE_NOOP("L", "--output is required unless --analyze-only is given"));
}

QString cliNeedsPaths()
{
    return translated(QT_TRANSLATE_NOOP("L", "no files or folders given"));
}

QString cliInvalidValue(const QString &option, const QString &value)
{
    return translated(QT_TRANSLATE_NOOP("L", "invalid value for %1: \u201c%2\u201d"))
        .arg(option, value);
}

QString cliNothingImported()
{
    return translated(
        QT_TRANSLATE_NOOP("L", "nothing to do: no supported audio files among the paths given"));
}

QString cliReportWritten(const QString &path)
{
    return translated(QT_TRANSLATE_NOOP("L", "Report written to %1")).arg(path);
}

QString cliNoSuchPath(const QString &path)
{
    return translated(QT_TRANSLATE_NOOP("L", "no such file or folder: %1")).arg(path);
}

QString cliWarning(const QString &text)
{
    return translated(QT_TRANSLATE_NOOP("L", "warning: %1")).arg(text);
}

QString cliMeasured(const QString &loudness, const QString &peak, const QString &range)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 LUFS, peak %2 dBTP, range %3 LU"))
        .arg(loudness, peak, range);
}

QString cliNotMeasured()
{
    return translated(QT_TRANSLATE_NOOP("L", "could not be measured"));
}

QString cliFigures(const QString &original, const QString &final, const QString &gain,
                   const QString &peak)
{
    return translated(QT_TRANSLATE_NOOP("L", "%1 \u2192 %2 LUFS, gain %3 dB, peak %4 dBTP"))
        .arg(original, final, gain, peak);
}

} // namespace L

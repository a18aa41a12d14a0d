// SPDX-License-Identifier: GPL-3.0-or-later
#include "localization/L.h"

#include "model/NumberFormat.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

struct Entry
{
    const char *source;
    // Counted: the catalogue holds plural forms and %n stands for the count.
    bool counted;
    // Tells two meanings of one English text apart for the translator.
    const char *disambiguation = nullptr;
};

Entry entry(L::Text key)
{
    switch (key) {
    case L::AppSubtitle:
        return {QT_TRANSLATE_NOOP("L", "Batch loudness normalization and audio conversion"), false};
    case L::ProcessingComplete:
        return {QT_TRANSLATE_NOOP("L", "Processing Complete"), false};
    case L::Files:
        return {QT_TRANSLATE_N_NOOP("L", "%n file(s)"), true};
    case L::Folders:
        return {QT_TRANSLATE_N_NOOP("L", "%n folder(s)"), true};
    case L::FilesProcessed:
        return {QT_TRANSLATE_N_NOOP("L", "%n file(s) processed"), true};
    case L::ReachedTarget:
        return {QT_TRANSLATE_N_NOOP("L", "%n reached target loudness"), true};
    case L::Converted:
        return {QT_TRANSLATE_N_NOOP("L", "%n converted"), true};
    case L::PeakLimited:
        return {QT_TRANSLATE_N_NOOP("L", "%n limited by true peak"), true};
    case L::FailedCount:
        return {QT_TRANSLATE_N_NOOP("L", "%n failed"), true};
    case L::RevealOutputFolder:
        return {QT_TRANSLATE_NOOP("L", "Reveal Output Folder"), false};
    case L::ProcessNewFiles:
        return {QT_TRANSLATE_NOOP("L", "Process New Files"), false};
    case L::PanelSelectFiles:
        return {QT_TRANSLATE_NOOP("L", "Select audio files to add to the queue"), false};
    case L::PanelSelectFolder:
        return {QT_TRANSLATE_NOOP("L", "Select a folder to scan for audio files"), false};
    case L::PanelChooseDestination:
        return {QT_TRANSLATE_NOOP("L", "Choose where prepared audio will be saved"), false};
    case L::DropHere:
        return {QT_TRANSLATE_NOOP("L", "Drop audio files or folders here"), false};
    case L::FilesLoaded:
        return {QT_TRANSLATE_N_NOOP("L", "%n file(s) loaded"), true};
    case L::IndividualFiles:
        return {QT_TRANSLATE_NOOP("L", "Individual files"), false};
    case L::AnalyzeLoudness:
        return {QT_TRANSLATE_NOOP("L", "Analyze Loudness"), false};
    case L::ProcessFiles:
        return {QT_TRANSLATE_N_NOOP("L", "Process %n File(s)"), true};
    case L::FilesReady:
        return {QT_TRANSLATE_N_NOOP("L", "%n file(s) ready"), true};
    case L::AnalyzingProgress:
        return {QT_TRANSLATE_NOOP("L", "Analyzing loudness\u2026 %1/%2"), false};
    case L::ProcessingProgress:
        return {QT_TRANSLATE_NOOP("L", "Processing %1 of %2"), false};
    case L::NoOutputFolder:
        return {QT_TRANSLATE_NOOP("L", "No output folder selected"), false};
    case L::Added:
        return {QT_TRANSLATE_N_NOOP("L", "%n added"), true};
    case L::AlreadyInQueue:
        return {QT_TRANSLATE_N_NOOP("L", "%n already in queue"), true};
    case L::NormalizeLoudness:
        return {QT_TRANSLATE_NOOP("L", "Normalize loudness"), false};
    case L::TruePeakCeiling:
        return {QT_TRANSLATE_NOOP("L", "True Peak Ceiling"), false};
    case L::NoFolderSelected:
        return {QT_TRANSLATE_NOOP("L", "No folder selected"), false};
    case L::RevealWhenComplete:
        return {QT_TRANSLATE_NOOP("L", "Reveal in file manager when complete"), false};
    case L::NoFilesInQueue:
        return {QT_TRANSLATE_NOOP("L", "No files in queue"), false};
    case L::RemoveFromQueue:
        return {QT_TRANSLATE_NOOP("L", "Remove from queue"), false};
    case L::ProcessSelected:
        return {QT_TRANSLATE_NOOP("L", "Process Selected (%1)"), false};
    case L::OfFiles:
        return {QT_TRANSLATE_NOOP("L", "%1 of %2 files"), false};
    case L::WarnInsideSource:
        return {QT_TRANSLATE_NOOP("L",
                                  "The output folder overlaps your imported files. Exports will be "
                                  "kept separate, but choosing a folder outside the source is "
                                  "recommended."),
                false};
    case L::WarnNotWritable:
        return {QT_TRANSLATE_NOOP("L", "Tonbrook can't write to this folder. Choose a different "
                                       "destination."),
                false};
    case L::SupportMenuItem:
        return {QT_TRANSLATE_NOOP("L", "Support the project"), false};
    case L::SupportTitle:
        return {QT_TRANSLATE_NOOP("L", "Thank you for using Tonbrook"), false};
    case L::SupportBody:
        return {QT_TRANSLATE_NOOP(
                    "L", "Tonbrook is a free tool by Quillmere Tools. If it helps your "
                         "work, you can support its development with a tip or by "
                         "subscribing to the channel. It's entirely optional \u2014 and it "
                         "helps new tools get made."),
                false};
    case L::SupportChannelButton:
        return {QT_TRANSLATE_NOOP("L", "Subscribe to channel"), false};
    case L::SampleRateHeading:
        return {QT_TRANSLATE_NOOP("L", "Sample Rate"), false};
    case L::BitDepthHeading:
        return {QT_TRANSLATE_NOOP("L", "Bit Depth"), false};
    case L::OutputFormatHeading:
        return {QT_TRANSLATE_NOOP("L", "Output Format"), false};
    case L::DamagedMessage:
        return {QT_TRANSLATE_NOOP(
                    "L", "Could not process \u201c%1\u201d.\nThe file may be damaged or use "
                         "an unsupported codec."),
                false};
    case L::DiskFullMessage:
        return {QT_TRANSLATE_NOOP("L",
                                  "Could not save \u201c%1\u201d.\nThe disk is full \u2014 free up "
                                  "space and try again."),
                false};
    case L::PermissionMessage:
        return {QT_TRANSLATE_NOOP("L",
                                  "Could not write \u201c%1\u201d.\nTonbrook doesn\u2019t have "
                                  "permission for that folder."),
                false};
    case L::WriteFailedMessage:
        return {QT_TRANSLATE_NOOP("L",
                                  "Could not save \u201c%1\u201d.\nCheck that the output folder is "
                                  "writable and has enough free space."),
                false};
    case L::ReadOnlyMessage:
        return {QT_TRANSLATE_NOOP("L", "Could not save \u201c%1\u201d.\nThe output folder is on a "
                                       "read-only disk."),
                false};
    case L::PathTooLongMessage:
        return {QT_TRANSLATE_NOOP("L",
                                  "Could not save \u201c%1\u201d.\nThe output path is too long for "
                                  "the disk \u2014 choose an output folder with a shorter path."),
                false};
    case L::SourceMissingMessage:
        return {QT_TRANSLATE_NOOP("L",
                                  "Could not read \u201c%1\u201d.\nThe file was moved or deleted "
                                  "after it was added."),
                false};
    case L::SourceUnreadableMessage:
        return {QT_TRANSLATE_NOOP("L", "Could not read \u201c%1\u201d.\nTonbrook doesn\u2019t have "
                                       "permission to read that file."),
                false};
    case L::TookTooLongMessage:
        return {QT_TRANSLATE_NOOP("L",
                                  "Could not process \u201c%1\u201d.\nReading it took far longer "
                                  "than a file of its size should; its header may be wrong."),
                false};
    case L::ClippedWarning:
        return {QT_TRANSLATE_NOOP("L",
                                  "Peaks reach %1 dBTP, above full scale: they are clipped in %2 "
                                  "PCM. Choose 32-bit float to keep them."),
                false};
    case L::ChannelsChanged:
        return {QT_TRANSLATE_NOOP("L", "Downmixed from %1 channels to %2: %3 takes at most %2."),
                false};
    case L::InstallationProblem:
        return {QT_TRANSLATE_NOOP("L",
                                  "Tonbrook\u2019s own ffmpeg is missing or cannot start (%1). "
                                  "Nothing was processed: reinstall Tonbrook."),
                false};
    case L::ReportOverAudioRefused:
        return {QT_TRANSLATE_NOOP("L",
                                  "The report is not written over \u201c%1\u201d: it is an audio "
                                  "file. Choose another name."),
                false};
    case L::SameFileSkippedMessage:
        return {QT_TRANSLATE_NOOP("L", "Skipped \u201c%1\u201d to avoid overwriting the original "
                                       "file.\nChoose an output folder outside the source."),
                false};
    case L::CancelledMessage:
        return {QT_TRANSLATE_NOOP("L", "Cancelled."), false};
    case L::ReportNotSaved:
        return {QT_TRANSLATE_NOOP("L", "Could not save the report: %1"), false};
    case L::SelectFiles:
        return {QT_TRANSLATE_NOOP("L", "Select Files"), false};
    case L::SelectFolder:
        return {QT_TRANSLATE_NOOP("L", "Select Folder"), false};
    case L::AddFiles:
        return {QT_TRANSLATE_NOOP("L", "Add Files"), false};
    case L::AddFolder:
        return {QT_TRANSLATE_NOOP("L", "Add Folder"), false};
    case L::RemoveSelected:
        return {QT_TRANSLATE_NOOP("L", "Remove Selected"), false};
    case L::ClearQueue:
        return {QT_TRANSLATE_NOOP("L", "Clear Queue"), false};
    case L::ColumnFile:
        return {QT_TRANSLATE_NOOP("L", "FILE"), false};
    case L::ColumnSource:
        return {QT_TRANSLATE_NOOP("L", "SOURCE"), false};
    case L::ColumnLoudness:
        return {QT_TRANSLATE_NOOP("L", "LOUDNESS"), false};
    case L::ColumnOutput:
        return {QT_TRANSLATE_NOOP("L", "OUTPUT"), false};
    case L::ColumnStatus:
        return {QT_TRANSLATE_NOOP("L", "STATUS"), false};
    case L::SelectAll:
        return {QT_TRANSLATE_NOOP("L", "Select all"), false};
    case L::ProcessingTitle:
        return {QT_TRANSLATE_NOOP("L", "Processing"), false};
    case L::Cancel:
        return {QT_TRANSLATE_NOOP("L", "Cancel"), false};
    case L::ExportReport:
        return {QT_TRANSLATE_NOOP("L", "Export Report"), false};
    case L::Details:
        return {QT_TRANSLATE_NOOP("L", "Details"), false};
    case L::Done:
        return {QT_TRANSLATE_NOOP("L", "Done"), false};
    case L::CloseSheet: {
        static constexpr struct
        {
            const char *source;
            const char *comment;
        } closeSheet = QT_TRANSLATE_NOOP3("L", "Done", "the button that closes a sheet");
        return {closeSheet.source, false, closeSheet.comment};
    }
    case L::Close:
        return {QT_TRANSLATE_NOOP("L", "Close"), false};
    case L::Version:
        return {QT_TRANSLATE_NOOP("L", "Version"), false};
    case L::About:
        return {QT_TRANSLATE_NOOP("L", "About"), false};
    case L::Licenses:
        return {QT_TRANSLATE_NOOP("L", "Licenses"), false};
    case L::ViewLicense:
        return {QT_TRANSLATE_NOOP("L", "View license"), false};
    case L::HideLicense:
        return {QT_TRANSLATE_NOOP("L", "Hide license"), false};
    case L::LeaveTip:
        return {QT_TRANSLATE_NOOP("L", "Leave a tip"), false};
    case L::Language:
        return {QT_TRANSLATE_NOOP("L", "Language"), false};
    case L::Choose:
        return {QT_TRANSLATE_NOOP("L", "Choose"), false};
    case L::ProcessFilesNone:
        return {QT_TRANSLATE_NOOP("L", "Process Files"), false};
    case L::Complete:
        return {QT_TRANSLATE_NOOP("L", "Complete"), false};
    case L::TargetHeading:
        return {QT_TRANSLATE_NOOP("L", "Target Loudness"), false};
    case L::PresetLabel:
        return {QT_TRANSLATE_NOOP("L", "Preset"), false};
    case L::CustomTarget:
        return {QT_TRANSLATE_NOOP("L", "Custom target"), false};
    case L::OutputFolderHeading:
        return {QT_TRANSLATE_NOOP("L", "Output Folder"), false};
    case L::ChooseFolder:
        return {QT_TRANSLATE_NOOP("L", "Choose\u2026"), false};
    case L::AddPrefix:
        return {QT_TRANSLATE_NOOP("L", "Add prefix"), false};
    case L::Copyright:
        return {QT_TRANSLATE_NOOP("L",
                                  "\u00a9 2026 Quillmere Tools. Free software under the GNU GPL, "
                                  "version 3 or later."),
                false};
    case L::FfmpegSummary:
        return {QT_TRANSLATE_NOOP("L",
                                  "Loudness analysis and audio encoding. Built with --disable-gpl "
                                  "--enable-version3."),
                false};
    case L::LameSummary:
        return {QT_TRANSLATE_NOOP("L", "MP3 encoder (libmp3lame), statically linked into FFmpeg."),
                false};
    case L::FfmpegBuildDescription:
        return {QT_TRANSLATE_NOOP("L", "%1 \u2014 LGPL v3 build (GPL components disabled)"), false};
    case L::DropToAdd:
        return {QT_TRANSLATE_NOOP("L", "Drop to add to the queue"), false};
    case L::AudioFilesFilter:
        return {QT_TRANSLATE_NOOP("L", "Audio files"), false};
    case L::CliDescription:
        return {QT_TRANSLATE_NOOP("L",
                                  "Measures audio files and writes them at one loudness, as the "
                                  "Tonbrook window does."),
                false};
    case L::CliUsage:
        return {QT_TRANSLATE_NOOP("L", "Usage: %1 [options] PATH..."), false};
    case L::CliOutputOption:
        return {QT_TRANSLATE_NOOP("L", "Output folder (required unless --analyze-only)."), false};
    case L::CliPresetOption:
        return {QT_TRANSLATE_NOOP("L", "Loudness preset: %1."), false};
    case L::CliTargetOption:
        return {
            QT_TRANSLATE_NOOP("L", "Custom target loudness, -70 to -5; selects the custom preset."),
            false};
    case L::CliCeilingOption:
        return {QT_TRANSLATE_NOOP("L", "True-peak ceiling, -9 to 0 (default -1.0)."), false};
    case L::CliNoNormalizeOption:
        return {QT_TRANSLATE_NOOP("L", "Convert only; do not change the loudness."), false};
    case L::CliFormatOption:
        return {QT_TRANSLATE_NOOP("L", "Output format: keepOriginal, wav, aiff, mp3, caf."), false};
    case L::CliSampleRateOption:
        return {QT_TRANSLATE_NOOP("L", "Sample rate: preserveOriginal, rate44100, rate48000."),
                false};
    case L::CliBitDepthOption:
        return {QT_TRANSLATE_NOOP(
                    "L", "Bit depth of PCM output: 16, 24 or 32 (32-bit float) (default 24)."),
                false};
    case L::CliPrefixOption:
        return {QT_TRANSLATE_NOOP("L", "Put this text before every output file name."), false};
    case L::CliReportOption:
        return {QT_TRANSLATE_NOOP("L", "Write the run's CSV report to this file."), false};
    case L::CliAnalyzeOnlyOption:
        return {QT_TRANSLATE_NOOP("L", "Measure and print; write nothing."), false};
    case L::CliJsonOption:
        return {QT_TRANSLATE_NOOP("L", "Print one JSON object per file instead of text."), false};
    case L::CliLanguageOption:
        return {QT_TRANSLATE_NOOP("L", "Language of this run: system, en or ru."), false};
    case L::CliPathsArgument:
        return {QT_TRANSLATE_NOOP("L", "Audio files and folders to process."), false};
    case L::CliNeedsOutput:
        return {QT_TRANSLATE_NOOP("L", "--output is required unless --analyze-only is given"),
                false};
    case L::CliNeedsPaths:
        return {QT_TRANSLATE_NOOP("L", "no files or folders given"), false};
    case L::CliInvalidValue:
        return {QT_TRANSLATE_NOOP("L", "invalid value for %1: \u201c%2\u201d"), false};
    case L::CliNothingImported:
        return {
            QT_TRANSLATE_NOOP("L", "nothing to do: no supported audio files among the paths given"),
            false};
    case L::CliReportWritten:
        return {QT_TRANSLATE_NOOP("L", "Report written to %1"), false};
    case L::CliNoSuchPath:
        return {QT_TRANSLATE_NOOP("L", "no such file or folder: %1"), false};
    case L::CliWarning:
        return {QT_TRANSLATE_NOOP("L", "warning: %1"), false};
    case L::CliMeasured:
        return {QT_TRANSLATE_NOOP("L", "%1 LUFS, peak %2 dBTP, range %3 LU"), false};
    case L::CliNotMeasured:
        return {QT_TRANSLATE_NOOP("L", "could not be measured"), false};
    case L::CliFigures:
        return {QT_TRANSLATE_NOOP("L", "%1 \u2192 %2 LUFS, gain %3 dB, peak %4 dBTP"), false};
    case L::LoudnessNotMeasured:
        return {QT_TRANSLATE_NOOP("L", "Not measured yet"), false};
    case L::LoudnessSilent:
        return {QT_TRANSLATE_NOOP("L", "Silent"), false};
    case L::LoudnessSilentTip:
        return {QT_TRANSLATE_NOOP("L", "Silent or too short to measure"), false};
    case L::LoudnessUnreadable:
        return {QT_TRANSLATE_NOOP("L", "Unreadable"), false};
    case L::LoudnessUnreadableTip:
        return {QT_TRANSLATE_NOOP("L", "The file could not be read to measure it"), false};
    case L::BackToQueue:
        return {QT_TRANSLATE_NOOP("L", "Back to Queue"), false};
    case L::RetryFailed:
        return {QT_TRANSLATE_NOOP("L", "Retry Failed"), false};
    case L::ColumnGain:
        return {QT_TRANSLATE_NOOP("L", "GAIN"), false};
    case L::ResultInput:
        return {QT_TRANSLATE_NOOP("L", "Input"), false};
    case L::ResultGain:
        return {QT_TRANSLATE_NOOP("L", "Gain"), false};
    case L::ResultOutput:
        return {QT_TRANSLATE_NOOP("L", "Output"), false};
    case L::ResultWrittenTo:
        return {QT_TRANSLATE_NOOP("L", "Written to"), false};
    case L::MeasurementFigures:
        return {QT_TRANSLATE_NOOP("L", "%1 LUFS \u00b7 %2 dBTP \u00b7 range %3 LU"), false};
    case L::OutputFigures:
        return {QT_TRANSLATE_NOOP("L", "%1 LUFS \u00b7 %2 dBTP"), false};
    case L::LoudnessUnchanged:
        return {QT_TRANSLATE_NOOP("L", "Loudness unchanged"), false};
    case L::CeilingShort:
        return {QT_TRANSLATE_NOOP("L", "ceiling %1 dBTP"), false};
    case L::ShowSettings:
        return {QT_TRANSLATE_NOOP("L", "Settings"), false};
    case L::HideSettings:
        return {QT_TRANSLATE_NOOP("L", "Hide settings"), false};
    case L::ColumnFolder:
        return {QT_TRANSLATE_NOOP("L", "FOLDER"), false};
    case L::NoFilesShown:
        return {QT_TRANSLATE_NOOP("L", "No files to show"), false};
    case L::ShowAll:
        return {QT_TRANSLATE_NOOP("L", "All files"), false};
    case L::ShowFailed:
        return {QT_TRANSLATE_NOOP("L", "Failed files"), false};
    case L::ShowNotMeasured:
        return {QT_TRANSLATE_NOOP("L", "Not measured"), false};
    case L::RunElapsed:
        return {QT_TRANSLATE_NOOP("L", "Elapsed %1"), false};
    case L::RunRemaining:
        return {QT_TRANSLATE_NOOP("L", "about %1 left"), false};
    case L::StopRunQuestion:
        return {QT_TRANSLATE_NOOP("L", "Stop processing?"), false};
    case L::StopRunBody:
        return {QT_TRANSLATE_NOOP("L", "%1 of %2 files are done. The files not yet written will "
                                       "stay in the queue; nothing written so far is lost."),
                false};
    case L::KeepGoing:
        return {QT_TRANSLATE_NOOP("L", "Keep Going"), false};
    case L::StopRun:
        return {QT_TRANSLATE_NOOP("L", "Stop"), false};
    case L::ImportScanning:
        return {QT_TRANSLATE_NOOP("L", "Scanning\u2026 %1 found"), false};
    case L::SkippedUnsupported:
        return {QT_TRANSLATE_N_NOOP("L", "%n file(s) skipped: unsupported format (%1)"), true};
    case L::SkippedNotAudio:
        return {QT_TRANSLATE_N_NOOP("L", "%n item(s) skipped: not audio files"), true};
    case L::CliJobsOption:
        return {QT_TRANSLATE_NOOP("L", "Files measured or written at once, 1 to 64 (default %1: "
                                       "one per core, at least 3, at most 16)."),
                false};
    case L::CliSkipExistingOption:
        return {QT_TRANSLATE_NOOP("L", "Leave out files whose output file is already there, so "
                                       "that an interrupted run can be resumed."),
                false};
    case L::AlreadyWritten:
        return {QT_TRANSLATE_NOOP("L", "Already written: %1"), false};
    case L::SkippedExisting:
        return {QT_TRANSLATE_N_NOOP("L", "%n file(s) skipped: already written"), true};
    }
    return {"", false};
}

QString translated(const char *text, const char *disambiguation = nullptr)
{
    return QCoreApplication::translate("L", text, disambiguation);
}

} // namespace

L::L(QObject *parent)
    : QObject(parent)
{
    // Installing or removing a catalogue sends the application a LanguageChange.
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
}

bool L::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange)
        Q_EMIT languageChanged();
    return QObject::eventFilter(watched, event);
}

QString L::text(Text key, const QVariant &a, const QVariant &b, const QVariant &c,
                const QVariant &d)
{
    const Entry found = entry(key);
    QList<const QVariant *> arguments;
    for (const QVariant *argument : {&a, &b, &c, &d}) {
        if (argument->isValid())
            arguments.append(argument);
    }
    QString result;
    if (found.counted && !arguments.isEmpty())
        result = QCoreApplication::translate("L", found.source, found.disambiguation,
                                             arguments.takeFirst()->toInt());
    else
        result = translated(found.source, found.disambiguation);
    // All at once, so that a %1 inside an argument (a file name) stays as it is.
    switch (arguments.size()) {
    case 1:
        return result.arg(arguments[0]->toString());
    case 2:
        return result.arg(arguments[0]->toString(), arguments[1]->toString());
    case 3:
        return result.arg(arguments[0]->toString(), arguments[1]->toString(),
                          arguments[2]->toString());
    case 4:
        return result.arg(arguments[0]->toString(), arguments[1]->toString(),
                          arguments[2]->toString(), arguments[3]->toString());
    default:
        return result;
    }
}

QString L::presetName(const LoudnessPreset &preset)
{
    const QStringView id = preset.id;
    if (id == u"theatre_ambience")
        return translated(QT_TRANSLATE_NOOP("L", "Theatre Ambience"));
    if (id == u"active_ambience")
        return translated(QT_TRANSLATE_NOOP("L", "Active Ambience"));
    if (id == u"music_playback")
        return translated(QT_TRANSLATE_NOOP("L", "Music / Playback"));
    if (id == u"voice_dialogue")
        return translated(QT_TRANSLATE_NOOP("L", "Voice / Dialogue"));
    if (id == u"podcast")
        return translated(QT_TRANSLATE_NOOP("L", "Podcast"));
    if (id == u"streaming")
        return translated(QT_TRANSLATE_NOOP("L", "Streaming"));
    if (id == u"custom")
        return translated(QT_TRANSLATE_NOOP("L", "Custom"));
    return preset.id;
}

QString L::presetLabel(const LoudnessPreset &preset)
{
    if (!preset.targetLUFS)
        return presetName(preset);
    return presetName(preset) + u' ' + NumberFormat::fixed(*preset.targetLUFS, 0) +
           QStringLiteral(" LUFS");
}

QString L::sampleRateLabel(SampleRateMode mode)
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

QString L::outputFormatLabel(OutputFormatMode mode)
{
    if (mode == OutputFormatMode::KeepOriginal)
        return translated(QT_TRANSLATE_NOOP("L", "Keep original"));
    return OutputFormatModes::rawValue(mode).toUpper();
}

QString L::bitDepthLabel(OutputBitDepth depth)
{
    switch (depth) {
    case OutputBitDepth::Bit16:
        return translated(QT_TRANSLATE_NOOP("L", "16-bit"));
    case OutputBitDepth::Bit24:
        return translated(QT_TRANSLATE_NOOP("L", "24-bit"));
    case OutputBitDepth::Float32:
        return translated(QT_TRANSLATE_NOOP("L", "32-bit float"));
    }
    return {};
}

QString L::statusName(ProcessingStatus::Kind kind)
{
    switch (kind) {
    case ProcessingStatus::Kind::Ready:
        return translated(QT_TRANSLATE_NOOP("L", "Ready"));
    case ProcessingStatus::Kind::Queued:
        return translated(QT_TRANSLATE_NOOP("L", "Queued"));
    case ProcessingStatus::Kind::Analyzing:
        return translated(QT_TRANSLATE_NOOP("L", "Analyzing"));
    case ProcessingStatus::Kind::Processing:
        return text(ProcessingTitle);
    case ProcessingStatus::Kind::Done:
        return text(Done);
    case ProcessingStatus::Kind::Warning:
        return translated(QT_TRANSLATE_NOOP("L", "Warning"));
    case ProcessingStatus::Kind::Failed:
        return translated(QT_TRANSLATE_NOOP("L", "Failed"));
    case ProcessingStatus::Kind::Cancelled:
        return translated(QT_TRANSLATE_NOOP("L", "Cancelled"));
    case ProcessingStatus::Kind::Skipped:
        return translated(QT_TRANSLATE_NOOP("L", "Skipped"));
    }
    return {};
}

QString L::languageName(AppLanguage language)
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

QString L::sampleRateChanged(int from, int to, const QString &format)
{
    const auto kilohertz = [](int hertz) { return QString::number(hertz / 1000.0); };
    return translated(QT_TRANSLATE_NOOP("L", "Written at %2 kHz instead of %1 kHz: %3 cannot take "
                                             "%1 kHz."))
        .arg(kilohertz(from), kilohertz(to), format);
}

QString L::notKept(const QStringList &kinds, const QString &format)
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

QStringList L::changeTexts(const ProcessingResult &result)
{
    const QString format = result.outputFileName.section(u'.', -1).toUpper();
    QStringList texts;
    for (const OutputChange &change : result.changes)
        texts.append(change.kind == OutputChange::Kind::SampleRate
                         ? sampleRateChanged(change.from, change.to, format)
                         : text(ChannelsChanged, change.from, change.to, format));
    if (!result.notKept.isEmpty())
        texts.append(notKept(result.notKept, format));
    return texts;
}

std::optional<QString> L::importNotice(int added, int duplicates,
                                       const QMap<QString, int> &unsupported)
{
    QStringList parts;
    if (added > 0)
        parts.append(text(Added, added));
    if (duplicates > 0)
        parts.append(text(AlreadyInQueue, duplicates));
    int skipped = 0;
    QStringList formats;
    for (auto format = unsupported.cbegin(); format != unsupported.cend(); ++format) {
        skipped += format.value();
        if (!format.key().isEmpty())
            formats.append(format.key());
    }
    if (skipped > 0)
        parts.append(formats.isEmpty()
                         ? text(SkippedNotAudio, skipped)
                         : text(SkippedUnsupported, skipped, formats.join(QStringLiteral(", "))));
    if (parts.isEmpty())
        return std::nullopt;
    return parts.join(QStringLiteral(" \u00b7 "));
}

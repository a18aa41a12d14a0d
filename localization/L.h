// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "localization/AppLanguage.h"
#include "model/LoudnessPreset.h"
#include "model/OutputBitDepth.h"
#include "model/OutputFormatMode.h"
#include "model/ProcessingResult.h"
#include "model/ProcessingStatus.h"
#include "model/SampleRateMode.h"

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

// The string table: every text the user reads, in the interface language of
// the moment (the Qt catalogue LanguageManager has installed). C++ reads it as
// `L::text(L::DropHere)`, `L::text(L::Files, 3)`; QML as
// `L.tr.text(L.DropHere)`, where reading `tr` makes the binding read its text
// again when the language changes. Counted texts take their plural forms from
// the catalogues; numbers are plain decimal, no grouping.
class L : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(L *tr READ tr NOTIFY languageChanged)

public:
    enum Text
    {
        AppSubtitle,
        ProcessingComplete,
        Files,
        Folders,
        FilesProcessed,
        ReachedTarget,
        Converted,
        PeakLimited,
        FailedCount,
        RevealOutputFolder,
        ProcessNewFiles,
        PanelSelectFiles,
        PanelSelectFolder,
        PanelChooseDestination,
        DropHere,
        FilesLoaded,
        IndividualFiles,
        AnalyzeLoudness,
        ProcessFiles,
        FilesReady,
        AnalyzingProgress,
        ProcessingProgress,
        NoOutputFolder,
        Added,
        AlreadyInQueue,
        NormalizeLoudness,
        TruePeakCeiling,
        NoFolderSelected,
        RevealWhenComplete,
        NoFilesInQueue,
        RemoveFromQueue,
        ProcessSelected,
        OfFiles,
        WarnInsideSource,
        WarnNotWritable,
        SupportMenuItem,
        SupportTitle,
        SupportBody,
        SupportChannelButton,
        SampleRateHeading,
        BitDepthHeading,
        OutputFormatHeading,
        DamagedMessage,
        DiskFullMessage,
        PermissionMessage,
        WriteFailedMessage,
        ReadOnlyMessage,
        PathTooLongMessage,
        SourceMissingMessage,
        SourceUnreadableMessage,
        TookTooLongMessage,
        ClippedWarning,
        ChannelsChanged,
        InstallationProblem,
        ReportOverAudioRefused,
        SameFileSkippedMessage,
        CancelledMessage,
        ReportNotSaved,
        SelectFiles,
        SelectFolder,
        AddFiles,
        AddFolder,
        RemoveSelected,
        ClearQueue,
        ColumnFile,
        ColumnSource,
        ColumnLoudness,
        ColumnOutput,
        ColumnStatus,
        SelectAll,
        ProcessingTitle,
        Cancel,
        ExportReport,
        Details,
        Done,
        // The button that closes a sheet: "Done" in English, not the status.
        CloseSheet,
        Close,
        Version,
        About,
        Licenses,
        ViewLicense,
        HideLicense,
        LeaveTip,
        Language,
        Choose,
        ProcessFilesNone,
        Complete,
        TargetHeading,
        PresetLabel,
        CustomTarget,
        OutputFolderHeading,
        ChooseFolder,
        AddPrefix,
        Copyright,
        FfmpegSummary,
        LameSummary,
        FfmpegBuildDescription,
        DropToAdd,
        AudioFilesFilter,
        CliDescription,
        CliUsage,
        CliOutputOption,
        CliPresetOption,
        CliTargetOption,
        CliCeilingOption,
        CliNoNormalizeOption,
        CliFormatOption,
        CliSampleRateOption,
        CliBitDepthOption,
        CliPrefixOption,
        CliReportOption,
        CliAnalyzeOnlyOption,
        CliJsonOption,
        CliLanguageOption,
        CliPathsArgument,
        CliNeedsOutput,
        CliNeedsPaths,
        CliInvalidValue,
        CliNothingImported,
        CliReportWritten,
        CliNoSuchPath,
        CliWarning,
        CliMeasured,
        CliNotMeasured,
        CliFigures,
        LoudnessNotMeasured,
        LoudnessSilent,
        LoudnessSilentTip,
        LoudnessUnreadable,
        LoudnessUnreadableTip,
        BackToQueue,
        RetryFailed,
        SkippedUnsupported,
        SkippedNotAudio,
        ColumnGain,
        ResultInput,
        ResultGain,
        ResultOutput,
        ResultWrittenTo,
        // "-21.5 LUFS · -3.2 dBTP · range 6.1 LU"
        MeasurementFigures,
        // "-16.0 LUFS · -1.0 dBTP"
        OutputFigures,
        LoudnessUnchanged,
        CeilingShort,
        ShowSettings,
        HideSettings,
        ColumnFolder,
        NoFilesShown,
        ShowAll,
        ShowFailed,
        ShowNotMeasured,
        RunElapsed,
        RunRemaining,
        StopRunQuestion,
        StopRunBody,
        KeepGoing,
        StopRun,
        ImportScanning,
        CliJobsOption,
        CliSkipExistingOption,
        // A skipped file's status line: where its output already is.
        AlreadyWritten,
        SkippedExisting,
    };
    Q_ENUM(Text)

    explicit L(QObject *parent = nullptr);

    L *tr() { return this; }

    // The text of a key. A counted key ("%n file(s)") takes its plural form
    // from the first argument; the other arguments fill %1, %2, ... in order.
    Q_INVOKABLE static QString text(L::Text key, const QVariant &a = {}, const QVariant &b = {},
                                    const QVariant &c = {}, const QVariant &d = {});

    // Texts composed from values.
    static QString presetName(const LoudnessPreset &preset);
    // The picker's text: "Streaming -14 LUFS", or the bare name without a target.
    static QString presetLabel(const LoudnessPreset &preset);
    static QString sampleRateLabel(SampleRateMode mode);
    static QString outputFormatLabel(OutputFormatMode mode);
    // "16-bit", "24-bit", "32-bit float".
    static QString bitDepthLabel(OutputBitDepth depth);
    // The badge's word for a status ("Ready", "Failed", ...).
    Q_INVOKABLE static QString statusName(ProcessingStatusKinds::Kind kind);
    // A language as its menu entry shows it: "System" in the interface language,
    // the others in their own ("English", "Русский").
    Q_INVOKABLE static QString languageName(AppLanguages::Language language);
    // What the encoder's limits changed, one sentence each.
    static QString sampleRateChanged(int from, int to, const QString &format);
    // What the source carried that the output format drops ("bext", "iXML",
    // "markers", "loops"), or "damaged" for a chunk list that could not be read.
    static QString notKept(const QStringList &kinds, const QString &format);
    // The sentences saying what the output format's limits changed or dropped
    // in a result, the format named by the written file's extension.
    static QStringList changeTexts(const ProcessingResult &result);
    // "3 added · 1 already in queue · 2 files skipped: unsupported format (flac)";
    // absent when nothing was added, found queued or skipped. `unsupported`
    // counts the skipped entries by extension ("" for those without one).
    static std::optional<QString> importNotice(int added, int duplicates,
                                               const QMap<QString, int> &unsupported);

Q_SIGNALS:
    void languageChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/AppScreenState.h"
#include "app/CompletionSummary.h"
#include "app/QueueModel.h"
#include "engine/CancellationToken.h"
#include "engine/OutputEncoding.h"
#include "files/ImportSummary.h"
#include "files/OutputFolderBookmarkStore.h"
#include "model/ProcessingSettings.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QThreadPool>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <exception>
#include <memory>
#include <optional>

class FileImporting;
class FilePanelPresenting;
class FolderRevealing;
class LoudnessAnalyzing;
class LoudnessProcessing;
class OutputPathResolving;
class SupportPresenting;

// The one controller behind the window and the command line: it owns the
// queue, the settings, the selection and every service, imports files,
// measures them (at most three at a time, in the background), processes them
// (likewise) and derives every text the screens show. It lives on the GUI
// thread; the background work never touches it, and results come back to it
// by item id, so a result for an item removed meanwhile is simply dropped.
// What the item-detail sheet shows of one queued file.
struct ItemDetails
{
    Q_GADGET
    QML_VALUE_TYPE(itemDetails)
    Q_PROPERTY(bool found MEMBER found CONSTANT)
    Q_PROPERTY(QString fileName MEMBER fileName CONSTANT)
    Q_PROPERTY(ProcessingStatusKinds::Kind status MEMBER status CONSTANT)
    Q_PROPERTY(QString statusMessage MEMBER statusMessage CONSTANT)
    Q_PROPERTY(QString errorDetails MEMBER errorDetails CONSTANT)
    Q_PROPERTY(QString changes MEMBER changes CONSTANT)

public:
    bool found = false;
    QString fileName;
    ProcessingStatus::Kind status = ProcessingStatus::Kind::Ready;
    QString statusMessage;
    QString errorDetails;
    // What the encoder's limits changed, a sentence a line.
    QString changes;
};

class MainViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QueueModel *queueModel READ queueModel CONSTANT)
    Q_PROPERTY(AppScreen::State screenState READ screenState NOTIFY screenStateChanged)
    Q_PROPERTY(QString importNotice READ importNoticeText NOTIFY importNoticeChanged)
    Q_PROPERTY(QString outputWarning READ outputWarningText NOTIFY outputWarningChanged)
    Q_PROPERTY(QString reportError READ reportErrorText NOTIFY reportErrorChanged)
    Q_PROPERTY(
        QString installationProblem READ installationProblemText NOTIFY installationProblemChanged)
    Q_PROPERTY(int processedCount READ processedCount NOTIFY processingProgressChanged)
    Q_PROPERTY(int runTotal READ runTotal NOTIFY processingProgressChanged)
    Q_PROPERTY(QString currentFileName READ currentFileNameText NOTIFY processingProgressChanged)
    Q_PROPERTY(bool hasCompletionSummary READ hasCompletionSummary NOTIFY completionSummaryChanged)
    Q_PROPERTY(CompletionSummary completionSummary READ completionSummaryValue NOTIFY
                   completionSummaryChanged)
    Q_PROPERTY(bool isAnalyzing READ isAnalyzing NOTIFY analysisChanged)
    Q_PROPERTY(int analysisDone READ analysisDone NOTIFY analysisChanged)
    Q_PROPERTY(int analysisTotal READ analysisTotal NOTIFY analysisChanged)
    Q_PROPERTY(int fileCount READ fileCount NOTIFY derivedChanged)
    Q_PROPERTY(int folderCount READ folderCount NOTIFY derivedChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY derivedChanged)
    Q_PROPERTY(bool allSelected READ allSelected NOTIFY derivedChanged)
    Q_PROPERTY(bool canProcess READ canProcess NOTIFY derivedChanged)
    Q_PROPERTY(bool hasUnanalyzedFiles READ hasUnanalyzedFiles NOTIFY derivedChanged)
    Q_PROPERTY(bool canAnalyze READ canAnalyze NOTIFY derivedChanged)
    Q_PROPERTY(QString processButtonTitle READ processButtonTitle NOTIFY derivedChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY derivedChanged)
    Q_PROPERTY(QString footerLeadingText READ footerLeadingText NOTIFY derivedChanged)
    Q_PROPERTY(QString footerTrailingText READ footerTrailingText NOTIFY derivedChanged)

public:
    // A file of a run, as it was when the run started.
    struct ProcessingJob
    {
        AudioFileItem item;
        QString destination;
        OutputEncoding encoding;
    };

    // What one job came back with: a result, or the error it ended with.
    struct ProcessingOutput
    {
        QUuid id;
        std::optional<ProcessingResult> result;
        std::exception_ptr error;
    };

    struct AnalysisResult
    {
        QUuid id;
        std::optional<LoudnessMeasurement> measurement;
        // The source as it was just before it was measured.
        std::optional<FileStamp> stamp;
        // The bundled ffmpeg could not run: the installation's fault, not the file's.
        std::optional<QString> installationFault{};
    };

    struct Services
    {
        std::shared_ptr<const FileImporting> importService;
        std::shared_ptr<FilePanelPresenting> panelPresenter;
        std::shared_ptr<const OutputPathResolving> outputPathService;
        OutputFolderBookmarkStore bookmarkStore;
        std::shared_ptr<const LoudnessAnalyzing> analysisService;
        std::shared_ptr<const LoudnessProcessing> processingService;
        std::shared_ptr<SupportPresenting> supportPresenter;
        std::shared_ptr<FolderRevealing> revealer;

        // The application's own: the import service on the folder scanner,
        // the shipped ffmpeg (three runners), the output folder remembered in
        // the user's preferences. The front end supplies what needs a screen;
        // without it, dialogs answer "cancelled" and nothing is revealed.
        static Services standard(std::shared_ptr<FilePanelPresenting> panelPresenter = nullptr,
                                 std::shared_ptr<FolderRevealing> revealer = nullptr,
                                 std::shared_ptr<SupportPresenting> supportPresenter = nullptr);
    };

    static constexpr int maxParallelJobs = 3;

    explicit MainViewModel(Services services, QObject *parent = nullptr);
    ~MainViewModel() override;

    // State.
    QueueModel *queueModel() { return &m_queue; }
    const QList<AudioFileItem> &queue() const { return m_queue.items(); }
    const ProcessingSettings &settings() const { return m_settings; }
    void setSettings(const ProcessingSettings &settings);
    AppScreenState screenState() const { return m_screenState; }
    const QSet<QUuid> &selectedIDs() const { return m_selectedIDs; }
    const std::optional<QString> &importNotice() const { return m_importNotice; }
    const std::optional<QString> &outputWarning() const { return m_outputWarning; }
    const std::optional<QString> &reportError() const { return m_reportError; }
    // Set when the bundled ffmpeg is missing or cannot start; every run stops at it.
    const std::optional<QString> &installationProblem() const { return m_installationProblem; }
    // The sentences saying what the output format's limits changed or dropped
    // in a result, the format named by the written file's extension.
    static QStringList changeTexts(const ProcessingResult &result);
    int processedCount() const { return m_processedCount; }
    int runTotal() const { return m_runTotal; }
    const std::optional<QString> &currentFileName() const { return m_currentFileName; }
    const std::optional<CompletionSummary> &completionSummary() const
    {
        return m_completionSummary;
    }
    bool isAnalyzing() const { return m_isAnalyzing; }
    int analysisDone() const { return m_analysisProgress.first; }
    int analysisTotal() const { return m_analysisProgress.second; }
    const QSet<QUuid> &analyzingIDs() const { return m_analyzingIDs; }
    // Where the last run wrote (or meant to write) an item: the name actually
    // written, which is a numbered one when the planned name was taken meanwhile.
    std::optional<QString> destinationOf(const QUuid &id) const;

    // Derived.
    QList<QUuid> effectiveTargetIDs() const;
    int fileCount() const { return static_cast<int>(queue().size()); }
    int folderCount() const;
    bool hasSelection() const { return !m_selectedIDs.isEmpty(); }
    bool allSelected() const;
    bool canProcess() const;
    bool hasUnanalyzedFiles() const;
    // Something is left to measure, and ffmpeg can run.
    bool canAnalyze() const { return hasUnanalyzedFiles() && !m_installationProblem; }
    QString processButtonTitle() const;
    QString statusText() const;
    QString footerLeadingText() const;
    QString footerTrailingText() const;
    // What an import added, kept so its notice can be said again in another language.
    struct ImportCounts
    {
        int added = 0;
        int duplicates = 0;
        int unsupported = 0;
    };
    static std::optional<QString> noticeText(const ImportCounts &counts);

    // Operations.
    Q_INVOKABLE void restoreOutputFolder();
    Q_INVOKABLE void selectFiles();
    Q_INVOKABLE void selectFolder();
    Q_INVOKABLE void importURLs(const QList<QUrl> &urls);
    void importPaths(const QStringList &paths);
    Q_INVOKABLE void toggleSelection(const QString &id);
    void toggleSelection(const QUuid &id);
    Q_INVOKABLE void toggleSelectAll();
    Q_INVOKABLE void removeItem(const QString &id);
    void removeItem(const QUuid &id);
    Q_INVOKABLE void removeSelected();
    Q_INVOKABLE void clearQueue();
    Q_INVOKABLE void chooseOutputFolder();
    Q_INVOKABLE void analyzeQueue();
    // Stops running analyses without emptying the queue (the command line's Ctrl-C).
    void stopAnalysis();
    Q_INVOKABLE void process();
    Q_INVOKABLE void cancelProcessing();
    Q_INVOKABLE void startNewBatch();
    Q_INVOKABLE void exportReport();
    // Why the report may not go to this path (an audio file, a queued source); absent when it may.
    std::optional<QString> reportPathRefusal(const QString &path) const;
    Q_INVOKABLE void revealOutputFolder();
    Q_INVOKABLE void showSupport();
    void setStatus(const ProcessingStatus &status, const QUuid &id);
    // What the item-detail sheet shows of one item; `found` is false for an unknown id.
    Q_INVOKABLE ItemDetails itemData(const QString &id) const;
    // Blocks until no job runs (their answers still wait in the event queue).
    void waitForBackgroundWork();

    // Property adaptors for the views.
    QString importNoticeText() const { return m_importNotice.value_or(QString()); }
    QString outputWarningText() const { return m_outputWarning.value_or(QString()); }
    QString reportErrorText() const { return m_reportError.value_or(QString()); }
    QString installationProblemText() const { return m_installationProblem.value_or(QString()); }
    QString currentFileNameText() const { return m_currentFileName.value_or(QString()); }
    bool hasCompletionSummary() const { return m_completionSummary.has_value(); }
    CompletionSummary completionSummaryValue() const
    {
        return m_completionSummary.value_or(CompletionSummary());
    }

public Q_SLOTS:
    // Every text is read again in the interface language of the moment.
    void retranslate();

Q_SIGNALS:
    void settingsChanged();
    void screenStateChanged();
    void importNoticeChanged();
    void outputWarningChanged();
    void reportErrorChanged();
    void installationProblemChanged();
    void processingProgressChanged();
    void completionSummaryChanged();
    void analysisChanged();
    void derivedChanged();
    // One item of a run has its outcome (written, warned, failed or cancelled).
    void itemFinished(const QUuid &id);

private:
    void revalidateOutputFolder();
    void runAnalysis(std::vector<std::pair<QUuid, QString>> pending);
    void applyMeasurement(const AnalysisResult &result);
    void runProcessing(const QList<QUuid> &targets);
    std::vector<ProcessingJob> resolveJobs(const QList<QUuid> &targets, const QString &outputRoot);
    void applyProcessingOutput(const ProcessingOutput &output, const ProcessingJob &job,
                               bool cancelled);
    void finishToCompletion();
    CompletionSummary summarize(const std::vector<ProcessingJob> &jobs, bool normalized) const;
    void setScreenState(AppScreenState state);
    void setImportNotice(std::optional<QString> notice);
    void setOutputWarning(std::optional<QString> warning);
    void setReportError(std::optional<QString> error);
    // Stops what runs and says that the installation is at fault.
    void stopForInstallationFault(const QString &reason);
    void setCurrentFileName(std::optional<QString> name);
    void resetAnalysisState();

    Services m_services;
    QueueModel m_queue;
    ProcessingSettings m_settings;
    AppScreenState m_screenState = AppScreenState::Idle;
    QSet<QUuid> m_selectedIDs;
    std::optional<QString> m_importNotice;
    std::optional<ImportCounts> m_lastImport;
    std::optional<QString> m_outputWarning;
    std::optional<QString> m_reportError;
    std::optional<QString> m_installationProblem;
    int m_processedCount = 0;
    int m_runTotal = 0;
    std::optional<QString> m_currentFileName;
    std::optional<CompletionSummary> m_completionSummary;
    bool m_isAnalyzing = false;
    std::pair<int, int> m_analysisProgress{0, 0};
    QSet<QUuid> m_analyzingIDs;
    CancellationTokenPtr m_processingCancellation = std::make_shared<CancellationToken>();
    CancellationTokenPtr m_analysisCancellation = std::make_shared<CancellationToken>();
    // Each processing run's number; a run's late steps apply only while it is the latest.
    int m_run = 0;
    QHash<QUuid, QString> m_destinations;
    QThreadPool m_pool;
};

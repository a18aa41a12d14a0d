// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/AnalysisRun.h"
#include "app/AppScreenState.h"
#include "app/AppServices.h"
#include "app/CompletionSummary.h"
#include "app/ImportRun.h"
#include "app/ItemDetails.h"
#include "app/ProcessingRun.h"
#include "app/QueueModel.h"
#include "app/QueueView.h"
#include "model/ProcessingSettings.h"

#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <algorithm>
#include <optional>

// The one controller behind the window and the command line: the hub between
// the queue (QueueModel), the settings, the services and the two kinds of
// background work (AnalysisRun, ProcessingRun), and the source of every text
// the screens show. It lives on the GUI thread; background work never touches
// it, and results come back to it by item id, so a result for an item removed
// meanwhile is simply dropped.
class MainViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QueueModel *queueModel READ queueModel CONSTANT)
    Q_PROPERTY(QueueView *queueView READ queueView CONSTANT)
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
    Q_PROPERTY(QVariantList failures READ failures NOTIFY completionSummaryChanged)
    Q_PROPERTY(bool isAnalyzing READ isAnalyzing NOTIFY analysisChanged)
    Q_PROPERTY(bool isImporting READ isImporting NOTIFY importingChanged)
    Q_PROPERTY(int importFoundCount READ importFoundCount NOTIFY importingChanged)
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
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY windowTitleChanged)
    Q_PROPERTY(QVariantList runningFiles READ runningFiles NOTIFY runningFilesChanged)
    Q_PROPERTY(QString runTimeText READ runTimeText NOTIFY runClockChanged)
    Q_PROPERTY(int failedSoFar READ failedSoFar NOTIFY processingProgressChanged)
    Q_PROPERTY(bool stoppingNeedsConfirmation READ stoppingNeedsConfirmation NOTIFY runClockChanged)

public:
    using Services = AppServices;

    explicit MainViewModel(Services services = {}, QObject *parent = nullptr);
    ~MainViewModel() override;

    // State.
    QueueModel *queueModel() { return &m_queue; }
    // The queue as the window lists it: sorted and filtered.
    QueueView *queueView() { return &m_view; }
    const QList<AudioFileItem> &queue() const { return m_queue.items(); }
    const ProcessingSettings &settings() const { return m_settings; }
    void setSettings(const ProcessingSettings &settings);
    AppScreenState screenState() const { return m_screenState; }
    const QSet<QUuid> &selectedIDs() const { return m_queue.selected(); }
    const std::optional<QString> &importNotice() const { return m_importNotice; }
    const std::optional<QString> &outputWarning() const { return m_outputWarning; }
    const std::optional<QString> &reportError() const { return m_reportError; }
    // Set when the bundled ffmpeg is missing or cannot start; every run stops at it.
    const std::optional<QString> &installationProblem() const { return m_installationProblem; }
    int processedCount() const { return m_processing.processedCount(); }
    int runTotal() const { return m_processing.total(); }
    const std::optional<QString> &currentFileName() const { return m_processing.currentFileName(); }
    const std::optional<CompletionSummary> &completionSummary() const
    {
        return m_completionSummary;
    }
    bool isAnalyzing() const { return m_analysis.isRunning(); }
    int analysisDone() const { return m_analysis.done(); }
    int analysisTotal() const { return m_analysis.total(); }
    const QSet<QUuid> &analyzingIDs() const { return m_analysis.pending(); }
    // Where the last run wrote (or meant to write) an item: the name actually
    // written, which is a numbered one when the planned name was taken meanwhile.
    std::optional<QString> destinationOf(const QUuid &id) const
    {
        return m_processing.destinationOf(id);
    }

    // Derived.
    QList<QUuid> effectiveTargetIDs() const { return m_queue.effectiveTargets(); }
    int fileCount() const { return static_cast<int>(queue().size()); }
    int folderCount() const { return m_queue.folderCount(); }
    bool hasSelection() const { return !selectedIDs().isEmpty(); }
    bool allSelected() const { return m_queue.allSelected(); }
    bool canProcess() const;
    bool hasUnanalyzedFiles() const { return m_queue.unmeasuredCount() > 0; }
    // Something is left to measure, and ffmpeg can run.
    bool canAnalyze() const { return hasUnanalyzedFiles() && !m_installationProblem; }
    QString processButtonTitle() const;
    QString statusText() const;
    QString footerLeadingText() const;
    QString footerTrailingText() const;
    // "Tonbrook", or "Processing 12 of 300 — Tonbrook" while something runs.
    QString windowTitle() const;
    // "Elapsed 1:05 · about 3:20 left" while processing; the estimate once a file is done.
    QString runTimeText() const;
    int failedSoFar() const { return m_processing.failedCount(); }
    // The files being written now, in queue order, each {fileName, progress}
    // (progress 0 to 1, or -1 while not known).
    QVariantList runningFiles() const;
    // A run longer than a few seconds is not stopped (or the window closed)
    // without asking.
    bool stoppingNeedsConfirmation() const;
    static constexpr qint64 confirmAfterMilliseconds = 5000;

    // Operations.
    Q_INVOKABLE void restoreOutputFolder();
    Q_INVOKABLE void selectFiles();
    Q_INVOKABLE void selectFolder();
    Q_INVOKABLE void importURLs(const QList<QUrl> &urls);
    // Imports at once, before returning (the command line, scripts).
    void importPaths(const QStringList &paths);
    // Imports off the GUI thread: rows appear as paths are scanned, and the
    // window never waits. A second import waits for the first.
    void importInBackground(const QStringList &paths);
    bool isImporting() const { return m_import.isRunning() || !m_toAppend.isEmpty(); }
    // Files found so far by the import under way.
    int importFoundCount() const { return m_importFound; }
    Q_INVOKABLE void cancelImport();
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
    // From the completion screen back to the queue, every result kept in its row.
    Q_INVOKABLE void backToQueue();
    // Processes again the files whose processing failed.
    Q_INVOKABLE void retryFailed();
    // The last run's failed files, each {fileName, message}, in queue order.
    QVariantList failures() const;
    Q_INVOKABLE void exportReport();
    // Why the report may not go to this path (an audio file, a queued source); absent when it may.
    std::optional<QString> reportPathRefusal(const QString &path) const;
    Q_INVOKABLE void revealOutputFolder();
    Q_INVOKABLE void showSupport();
    void setStatus(const ProcessingStatus &status, const QUuid &id);
    // What the item-detail sheet shows of one item; `found` is false for an unknown id.
    Q_INVOKABLE ItemDetails itemData(const QString &id) const;
    // Blocks until no job runs (their answers still wait in the event queue).
    void waitForBackgroundWork() { m_pool.waitForDone(); }

    // Property adaptors for the views.
    QString importNoticeText() const { return m_importNotice.value_or(QString()); }
    QString outputWarningText() const { return m_outputWarning.value_or(QString()); }
    QString reportErrorText() const { return m_reportError.value_or(QString()); }
    QString installationProblemText() const { return m_installationProblem.value_or(QString()); }
    QString currentFileNameText() const { return currentFileName().value_or(QString()); }
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
    void importingChanged();
    void derivedChanged();
    void windowTitleChanged();
    void runningFilesChanged();
    // Once a second while processing.
    void runClockChanged();
    // One item of a run has its outcome (written, warned, failed or cancelled).
    void itemFinished(const QUuid &id);

private:
    // What an import added, kept so its notice can be said again in another language.
    struct ImportCounts
    {
        int added = 0;
        int duplicates = 0;
        QMap<QString, int> unsupported;
    };

    void revalidateOutputFolder();
    // With skipExisting: the queued files whose output a run would find already written.
    QSet<QUuid> alreadyWritten() const;
    // After an import: its notice, the output folder's check, and measuring.
    void imported(const ImportSummary &summary);
    // Appends found items a slice at a time, so the window draws in between.
    void appendFound();
    // The last rows of an import are in: its notice, then the next waiting import.
    void finishImport();
    void processItems(const QList<QUuid> &targets);
    void applyMeasurement(const AnalysisRun::Result &result);
    void applyJobOutput(const ProcessingRun::Job &job, const JobOutput &output, bool cancelled);
    void finishRun(bool cancelled);
    void setScreenState(AppScreenState state);
    void setImportNotice(std::optional<QString> notice);
    void setOutputWarning(std::optional<QString> warning);
    void setReportError(std::optional<QString> error);
    // Stops what runs and says that the installation is at fault.
    void stopForInstallationFault(const QString &reason);
    void setCompletionSummary(std::optional<CompletionSummary> summary);
    int parallelJobs() const { return std::max(1, m_services.parallelJobs); }

    Services m_services;
    QueueModel m_queue;
    QueueView m_view{m_queue};
    ProcessingSettings m_settings;
    AppScreenState m_screenState = AppScreenState::Idle;
    std::optional<QString> m_importNotice;
    std::optional<ImportCounts> m_lastImport;
    std::optional<QString> m_outputWarning;
    std::optional<QString> m_reportError;
    std::optional<QString> m_installationProblem;
    std::optional<CompletionSummary> m_completionSummary;
    QTimer m_runClock;
    // Jobs only wait on ffmpeg. Four threads per width: room for a measuring
    // batch, a processing run, an import and a cancelled run still winding down.
    QThreadPool m_pool;
    AnalysisRun m_analysis{m_pool, parallelJobs()};
    ImportRun m_import{m_pool};
    QList<AudioFileItem> m_toAppend;
    // The files being written now, in the order they started.
    QList<QUuid> m_writing;
    std::optional<ImportSummary> m_importTotals;
    QStringList m_waitingPaths;
    int m_importFound = 0;
    ProcessingRun m_processing{m_pool, parallelJobs()};
};

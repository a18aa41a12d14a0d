// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MainViewModel.h"

#include "app/OutputFolderCheck.h"
#include "app/ReportExport.h"
#include "files/OutputDestination.h"
#include "localization/L.h"
#include "model/NumberFormat.h"
#include "model/StandardPath.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

QStringList extensionsOfAllFormats()
{
    QStringList extensions;
    for (SourceAudioFormat format : SourceAudioFormats::all)
        extensions.append(SourceAudioFormats::rawValue(format));
    return extensions;
}

template<typename T>
bool assign(T &field, T value)
{
    if (field == value)
        return false;
    field = std::move(value);
    return true;
}

} // namespace

MainViewModel::MainViewModel(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
{
    m_settings = m_services.settingsStore.restore(m_settings);
    m_queue.setOutputMode(m_settings.outputFormatMode);
    m_pool.setMaxThreadCount(4 * parallelJobs());

    connect(&m_import, &ImportRun::found, this, [this](const QList<AudioFileItem> &items) {
        const bool draining = !m_toAppend.isEmpty();
        m_toAppend.append(items);
        m_importFound += static_cast<int>(items.size());
        Q_EMIT importingChanged();
        if (!draining && !m_toAppend.isEmpty())
            appendFound();
    });
    connect(&m_import, &ImportRun::finished, this,
            [this](const ImportSummary &totals, bool cancelled) {
                m_importTotals = totals;
                if (cancelled) {
                    // What was found but not yet shown is dropped, and not counted as added.
                    m_importTotals->items.resize(m_importTotals->items.size() - m_toAppend.size());
                    m_toAppend.clear();
                }
                if (m_toAppend.isEmpty())
                    finishImport();
            });
    connect(&m_analysis, &AnalysisRun::started, this, [this](const QUuid &id) {
        m_queue.update(id, [](AudioFileItem &item) {
            if (item.status.kind() == ProcessingStatus::Kind::Queued)
                item.status = ProcessingStatus::analyzing();
        });
    });
    connect(&m_analysis, &AnalysisRun::measured, this, &MainViewModel::applyMeasurement);
    connect(&m_analysis, &AnalysisRun::installationFault, this,
            &MainViewModel::stopForInstallationFault);
    connect(&m_analysis, &AnalysisRun::changed, this, [this] {
        Q_EMIT analysisChanged();
        Q_EMIT derivedChanged();
    });
    connect(&m_processing, &ProcessingRun::runStarted, this, [this] {
        setCompletionSummary(std::nullopt);
        // A report error belongs to the run it was about.
        setReportError(std::nullopt);
        setScreenState(AppScreenState::Processing);
    });
    connect(&m_processing, &ProcessingRun::jobStarted, this, [this](const QUuid &id) {
        setStatus(ProcessingStatus::processing(), id);
        m_writing.append(id);
        Q_EMIT runningFilesChanged();
    });
    connect(&m_processing, &ProcessingRun::jobProgress, this,
            [this](const QUuid &id, double fraction) {
                m_queue.setProgress(id, fraction);
                Q_EMIT runningFilesChanged();
            });
    connect(&m_processing, &ProcessingRun::jobFinished, this, &MainViewModel::applyJobOutput);
    connect(&m_processing, &ProcessingRun::progressChanged, this, [this] {
        Q_EMIT processingProgressChanged();
        Q_EMIT derivedChanged();
    });
    connect(&m_processing, &ProcessingRun::finished, this, &MainViewModel::finishRun);
    m_runClock.setInterval(1000);
    connect(&m_runClock, &QTimer::timeout, this, &MainViewModel::runClockChanged);
    connect(this, &MainViewModel::screenStateChanged, this, [this] {
        if (m_screenState == AppScreenState::Processing)
            m_runClock.start();
        else
            m_runClock.stop();
        Q_EMIT runClockChanged();
    });
    // Ticks change through the list too (a range ticked with Shift).
    connect(&m_queue, &QueueModel::selectionChanged, this, &MainViewModel::derivedChanged);
    // The title follows the status line.
    connect(this, &MainViewModel::derivedChanged, this, &MainViewModel::windowTitleChanged);
}

MainViewModel::~MainViewModel()
{
    // Ends every ffmpeg child within a poll interval, so the wait below is short.
    m_analysis.stop();
    m_processing.cancel();
    m_pool.waitForDone();
}

// ---- settings and derived values ----------------------------------------------------------------

void MainViewModel::setSettings(const ProcessingSettings &settings)
{
    if (settings == m_settings)
        return;
    const bool folderChanged = settings.outputFolder != m_settings.outputFolder;
    m_settings = settings;
    m_services.settingsStore.save(m_settings);
    m_queue.setOutputMode(m_settings.outputFormatMode);
    if (folderChanged)
        revalidateOutputFolder();
    Q_EMIT settingsChanged();
    Q_EMIT derivedChanged();
}

bool MainViewModel::canProcess() const
{
    return !queue().isEmpty() && m_settings.outputFolder.has_value() && !m_installationProblem;
}

QString MainViewModel::processButtonTitle() const
{
    // Selection only ever holds queued ids.
    if (hasSelection())
        return L::text(L::ProcessSelected, static_cast<int>(selectedIDs().size()));
    if (!queue().isEmpty())
        return L::text(L::ProcessFiles, fileCount());
    return L::text(L::ProcessFilesNone);
}

QString MainViewModel::statusText() const
{
    switch (m_screenState) {
    case AppScreenState::Idle:
        return isAnalyzing() ? L::text(L::AnalyzingProgress, analysisDone(), analysisTotal())
                             : L::text(L::FilesReady, fileCount());
    case AppScreenState::Processing:
        // Counted against the whole queue even when only a selection runs.
        return L::text(L::ProcessingProgress, processedCount(), fileCount());
    case AppScreenState::Completed:
        return L::text(L::Complete);
    }
    return {};
}

QString MainViewModel::footerLeadingText() const
{
    return L::text(L::Files, fileCount());
}

QString MainViewModel::footerTrailingText() const
{
    return m_settings.outputFolder.value_or(L::text(L::NoOutputFolder));
}

QString MainViewModel::windowTitle() const
{
    const QString name = QStringLiteral("Tonbrook");
    const bool busy = m_screenState == AppScreenState::Processing ||
                      (m_screenState == AppScreenState::Idle && isAnalyzing());
    return busy ? statusText() + QStringLiteral(" \u2014 ") + name : name;
}

QString MainViewModel::runTimeText() const
{
    if (m_screenState != AppScreenState::Processing)
        return {};
    const auto clock = [](qint64 milliseconds) {
        const qint64 seconds = (milliseconds + 500) / 1000;
        const QString minutesAndSeconds = QStringLiteral("%1:%2")
                                              .arg(seconds / 60 % 60)
                                              .arg(seconds % 60, 2, 10, QLatin1Char('0'));
        return seconds >= 3600 ? QStringLiteral("%1:%2")
                                     .arg(seconds / 3600)
                                     .arg(minutesAndSeconds.rightJustified(5, u'0'))
                               : minutesAndSeconds;
    };
    const qint64 elapsed = m_processing.elapsedMilliseconds();
    QString text = L::text(L::RunElapsed, clock(elapsed));
    const int done = processedCount();
    const int left = runTotal() - done;
    // Files of a run take about as long as those before them.
    if (done > 0 && left > 0)
        text += QStringLiteral(" \u00b7 ") + L::text(L::RunRemaining, clock(elapsed * left / done));
    return text;
}

QVariantList MainViewModel::runningFiles() const
{
    QVariantList files;
    for (const QUuid &id : m_writing) {
        const auto row = m_queue.rowOf(id);
        if (!row)
            continue;
        const QModelIndex at = m_queue.index(*row);
        files.append(
            QVariantMap{{QStringLiteral("fileName"), m_queue.data(at, QueueModel::FileNameRole)},
                        {QStringLiteral("progress"), m_queue.data(at, QueueModel::ProgressRole)}});
    }
    return files;
}

bool MainViewModel::stoppingNeedsConfirmation() const
{
    return m_screenState == AppScreenState::Processing &&
           m_processing.elapsedMilliseconds() >= confirmAfterMilliseconds;
}

void MainViewModel::retranslate()
{
    if (m_lastImport)
        setImportNotice(L::importNotice(m_lastImport->added, m_lastImport->duplicates,
                                        m_lastImport->unsupported));
    revalidateOutputFolder();
    m_queue.retranslate();
    Q_EMIT derivedChanged();
}

// ---- queue --------------------------------------------------------------------------------------

void MainViewModel::restoreOutputFolder()
{
    if (m_settings.outputFolder)
        return;
    if (const auto folder = m_services.bookmarkStore.restore()) {
        m_settings.outputFolder = folder;
        Q_EMIT settingsChanged();
        Q_EMIT derivedChanged();
    }
}

void MainViewModel::selectFiles()
{
    importInBackground(m_services.panelPresenter->presentFilePanel(extensionsOfAllFormats()));
}

void MainViewModel::selectFolder()
{
    const QStringList folders = m_services.panelPresenter->presentFolderPanel();
    if (!folders.isEmpty())
        importInBackground(folders);
}

void MainViewModel::importURLs(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            paths.append(localPathOf(url));
    }
    // A drop of something that is no local file still says so.
    while (paths.size() < urls.size())
        paths.append(QString());
    importInBackground(paths);
}

void MainViewModel::importPaths(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    const ImportSummary summary = m_services.importService->importPaths(paths, queue());
    m_queue.append(summary.items);
    imported(summary);
}

void MainViewModel::imported(const ImportSummary &summary)
{
    m_lastImport = ImportCounts{.added = static_cast<int>(summary.items.size()),
                                .duplicates = summary.duplicateCount,
                                .unsupported = summary.unsupportedFormats};
    setImportNotice(
        L::importNotice(m_lastImport->added, m_lastImport->duplicates, m_lastImport->unsupported));
    revalidateOutputFolder();
    analyzeQueue();
    Q_EMIT derivedChanged();
}

void MainViewModel::importInBackground(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    if (isImporting()) {
        m_waitingPaths.append(paths);
        return;
    }
    m_importFound = 0;
    m_importTotals.reset();
    m_import.start(paths, queue(), m_services.importService);
    Q_EMIT importingChanged();
}

void MainViewModel::cancelImport()
{
    m_import.cancel();
    m_waitingPaths.clear();
}

void MainViewModel::appendFound()
{
    // About a frame's worth of rows at a time.
    constexpr qsizetype slice = 5000;
    const QList<AudioFileItem> next = m_toAppend.first(std::min(slice, m_toAppend.size()));
    m_toAppend.remove(0, next.size());
    m_queue.append(next);
    Q_EMIT derivedChanged();
    if (!m_toAppend.isEmpty()) {
        QTimer::singleShot(0, this, &MainViewModel::appendFound);
        return;
    }
    if (m_importTotals && !m_import.isRunning())
        finishImport();
}

void MainViewModel::finishImport()
{
    imported(*std::exchange(m_importTotals, std::nullopt));
    Q_EMIT importingChanged();
    importInBackground(std::exchange(m_waitingPaths, {}));
}

void MainViewModel::toggleSelection(const QString &id)
{
    toggleSelection(QUuid::fromString(id));
}

void MainViewModel::toggleSelection(const QUuid &id)
{
    m_queue.toggleSelected(id);
}

void MainViewModel::toggleSelectAll()
{
    m_queue.toggleSelectAll();
}

void MainViewModel::removeItem(const QString &id)
{
    removeItem(QUuid::fromString(id));
}

void MainViewModel::removeItem(const QUuid &id)
{
    m_queue.remove({id});
    m_analysis.forget({id});
    revalidateOutputFolder();
    Q_EMIT derivedChanged();
}

void MainViewModel::removeSelected()
{
    if (!hasSelection())
        return;
    const QSet<QUuid> selected = selectedIDs();
    m_queue.remove(selected);
    m_analysis.forget(selected);
    revalidateOutputFolder();
    Q_EMIT derivedChanged();
}

void MainViewModel::clearQueue()
{
    cancelImport();
    m_toAppend.clear();
    // Running analyses stop through the old token; later ones get a new one.
    m_analysis.stop();
    m_queue.clear();
    m_lastImport.reset();
    setImportNotice(std::nullopt);
    revalidateOutputFolder();
    Q_EMIT derivedChanged();
}

void MainViewModel::chooseOutputFolder()
{
    const auto folder = m_services.panelPresenter->presentDestinationFolderPanel();
    if (!folder)
        return;
    m_settings.outputFolder = *folder;
    m_services.bookmarkStore.save(*folder);
    revalidateOutputFolder();
    Q_EMIT settingsChanged();
    Q_EMIT derivedChanged();
}

void MainViewModel::revalidateOutputFolder()
{
    setOutputWarning(OutputFolderCheck::warning(m_settings.outputFolder, queue(),
                                                *m_services.outputPathService));
}

ItemDetails MainViewModel::itemData(const QString &id) const
{
    const AudioFileItem *item = m_queue.find(QUuid::fromString(id));
    if (!item)
        return {};
    ItemDetails details{.found = true,
                        .fileName = displayedPath(fileNameOf(item->sourcePath)),
                        .status = item->status.kind(),
                        .statusMessage = item->status.message(),
                        .errorDetails = item->errorDetails.value_or(QString())};
    const auto figure = [](double value) { return NumberFormat::fixed(value, 1); };
    if (const auto &measured = item->measurement; measured && item->measuredLUFS)
        details.input = L::text(L::MeasurementFigures, figure(*item->measuredLUFS),
                                figure(measured->inputTP), figure(measured->inputLRA));
    const auto &result = item->result;
    if (!result)
        return details;
    details.changes = L::changeTexts(*result).join(u'\n');
    if (result->appliedGain)
        details.gain = NumberFormat::signedFixed(*result->appliedGain, 1) + QStringLiteral(" dB");
    if (result->finalLUFS && result->truePeak)
        details.output =
            L::text(L::OutputFigures, figure(*result->finalLUFS), figure(*result->truePeak));
    if (item->writtenPath)
        details.outputPath = displayedPath(*item->writtenPath);
    return details;
}

void MainViewModel::setStatus(const ProcessingStatus &status, const QUuid &id)
{
    m_queue.update(id, [&status](AudioFileItem &item) { item.status = status; });
}

// ---- analysis -----------------------------------------------------------------------------------

void MainViewModel::analyzeQueue()
{
    if (m_installationProblem)
        return;
    // A file a run would leave as it is need not be measured either.
    const QSet<QUuid> kept = alreadyWritten();
    std::vector<std::pair<QUuid, QString>> pending;
    for (const AudioFileItem &item : queue()) {
        if (item.needsMeasuring() && !analyzingIDs().contains(item.id) && !kept.contains(item.id))
            pending.emplace_back(item.id, item.sourcePath);
    }
    if (pending.empty())
        return;
    // Waiting until a job takes it: only the files being measured spin.
    QList<QUuid> ids;
    ids.reserve(static_cast<qsizetype>(pending.size()));
    for (const auto &[id, path] : pending)
        ids.append(id);
    m_queue.setStatus(ids, ProcessingStatus::queued());
    m_analysis.start(std::move(pending), m_services.analysisService,
                     m_settings.effectiveTargetLUFS(), m_settings.truePeakCeiling);
}

QSet<QUuid> MainViewModel::alreadyWritten() const
{
    QSet<QUuid> ids;
    if (!m_settings.skipExisting || !m_settings.outputFolder)
        return ids;
    QSet<QString> reserved;
    for (const AudioFileItem &item : queue()) {
        if (OutputDestination::forItem(item, m_settings, *m_settings.outputFolder, reserved)
                .existing)
            ids.insert(item.id);
    }
    return ids;
}

void MainViewModel::stopAnalysis()
{
    // The items are ready again before anyone hears that the analysis stopped.
    for (const QUuid &id : analyzingIDs())
        setStatus(ProcessingStatus::ready(), id);
    m_analysis.stop();
}

void MainViewModel::applyMeasurement(const AnalysisRun::Result &result)
{
    m_queue.update(result.id, [&result](AudioFileItem &item) {
        item.unreadable = result.failed;
        if (const auto &measurement = result.measurement) {
            item.measurement = measurement;
            item.measuredStamp = result.stamp;
            item.measuredLUFS = std::isfinite(measurement->inputI)
                                    ? std::optional(measurement->inputI)
                                    : std::nullopt;
        }
        // A late answer must not undo what processing has since shown.
        const ProcessingStatus::Kind kind = item.status.kind();
        if (kind == ProcessingStatus::Kind::Analyzing || kind == ProcessingStatus::Kind::Queued)
            item.status = ProcessingStatus::ready();
    });
}

// ---- processing ---------------------------------------------------------------------------------

void MainViewModel::process()
{
    processItems(effectiveTargetIDs());
}

void MainViewModel::retryFailed()
{
    QList<QUuid> failed;
    for (const AudioFileItem &item : queue()) {
        if (item.status.kind() == ProcessingStatus::Kind::Failed)
            failed.append(item.id);
    }
    processItems(failed);
}

void MainViewModel::processItems(const QList<QUuid> &targets)
{
    if (targets.isEmpty() || !m_settings.outputFolder || m_installationProblem ||
        m_screenState == AppScreenState::Processing)
        return;
    // What analysis had not reached yet is measured by the processing pass;
    // later imports and "Analyze Loudness" start measuring afresh.
    stopAnalysis();

    QList<AudioFileItem> items;
    items.reserve(targets.size());
    for (const QUuid &id : targets) {
        if (const AudioFileItem *item = m_queue.find(id))
            items.append(*item);
    }
    m_processing.start(items, m_settings, m_services.processingService);
}

void MainViewModel::applyJobOutput(const ProcessingRun::Job &job, const JobOutput &output,
                                   bool cancelled)
{
    m_queue.setProgress(job.item.id, std::nullopt);
    if (m_writing.removeOne(job.item.id))
        Q_EMIT runningFilesChanged();
    // A stopped job that answers after a later import queued its file for
    // measuring must not mark that file cancelled again.
    if (const AudioFileItem *item = m_queue.find(job.item.id);
        cancelled && item && item->status.kind() != ProcessingStatus::Kind::Processing)
        return;
    const ItemChange change = JobOutcome::itemChange(
        output, cancelled, displayedPath(fileNameOf(job.item.sourcePath)), job.destination);
    if (change.installationFault) {
        // Not this file's fault: it goes back to the queue untouched.
        setStatus(change.status, job.item.id);
        stopForInstallationFault(*change.installationFault);
        return;
    }
    std::optional<QString> written;
    if (const auto *result = std::get_if<ProcessingResult>(&output))
        written = job.writtenPath(*result);
    const bool updated = m_queue.update(job.item.id, [&change, &written](AudioFileItem &item) {
        item.writtenPath = written;
        item.status = change.status;
        item.result = change.result;
        item.errorDetails = change.errorDetails;
        if (change.measuredLUFS)
            item.measuredLUFS = change.measuredLUFS;
    });
    if (updated)
        Q_EMIT itemFinished(job.item.id);
}

void MainViewModel::finishRun(bool cancelled)
{
    if (cancelled) {
        setScreenState(AppScreenState::Idle);
        m_processing.clearCurrentFileName();
        return;
    }
    QList<ProcessingResult> results;
    for (const ProcessingRun::Job &job : m_processing.jobs()) {
        if (const AudioFileItem *item = m_queue.find(job.item.id); item && item->result)
            results.append(*item->result);
    }
    setCompletionSummary(CompletionSummary::of(results, m_settings.normalizeLoudness));
    if (m_services.notifier) {
        const CompletionSummary &summary = *m_completionSummary;
        QString body = L::text(L::FilesProcessed, summary.totalProcessed);
        if (summary.failed > 0)
            body += QStringLiteral(" \u00b7 ") + L::text(L::FailedCount, summary.failed);
        m_services.notifier->runEnded(L::text(L::ProcessingComplete), body);
    }
    setScreenState(AppScreenState::Completed);
    if (m_settings.revealInFinderWhenComplete && m_settings.outputFolder && m_services.revealer)
        m_services.revealer->revealFolder(*m_settings.outputFolder);
}

void MainViewModel::cancelProcessing()
{
    m_processing.cancel();
    setScreenState(AppScreenState::Idle);
    m_processing.clearCurrentFileName();
}

void MainViewModel::startNewBatch()
{
    clearQueue();
    backToQueue();
    m_processing.clearCount();
}

void MainViewModel::backToQueue()
{
    setCompletionSummary(std::nullopt);
    setReportError(std::nullopt);
    if (m_screenState == AppScreenState::Completed)
        setScreenState(AppScreenState::Idle);
}

QVariantList MainViewModel::failures() const
{
    QVariantList failed;
    if (!m_completionSummary)
        return failed;
    for (const ProcessingRun::Job &job : m_processing.jobs()) {
        const AudioFileItem *item = m_queue.find(job.item.id);
        if (item && item->status.kind() == ProcessingStatus::Kind::Failed)
            failed.append(
                QVariantMap{{QStringLiteral("fileName"), displayedPath(item->relativePath)},
                            {QStringLiteral("message"), item->status.message()}});
    }
    return failed;
}

// ---- after a run --------------------------------------------------------------------------------

void MainViewModel::exportReport()
{
    const bool anyResult = std::any_of(queue().cbegin(), queue().cend(),
                                       [](const AudioFileItem &item) { return item.result; });
    if (!anyResult)
        return;
    // Proposed in the output folder, beside what the run wrote.
    const QString name = QStringLiteral("Tonbrook Report.csv");
    const auto path = m_services.panelPresenter->presentSavePanel(
        m_settings.outputFolder ? *m_settings.outputFolder + u'/' + name : name,
        QStringLiteral("csv"));
    if (path)
        setReportError(ReportExport::write(*path, queue()));
}

std::optional<QString> MainViewModel::reportPathRefusal(const QString &path) const
{
    return ReportExport::refusal(path, queue());
}

void MainViewModel::revealOutputFolder()
{
    if (m_settings.outputFolder && m_services.revealer)
        m_services.revealer->revealFolder(*m_settings.outputFolder);
}

void MainViewModel::showSupport()
{
    if (m_services.supportPresenter)
        m_services.supportPresenter->showSupport();
}

// ---- published fields ---------------------------------------------------------------------------

void MainViewModel::setScreenState(AppScreenState state)
{
    if (assign(m_screenState, state)) {
        Q_EMIT screenStateChanged();
        Q_EMIT derivedChanged();
    }
}

void MainViewModel::setImportNotice(std::optional<QString> notice)
{
    if (assign(m_importNotice, std::move(notice)))
        Q_EMIT importNoticeChanged();
}

void MainViewModel::setOutputWarning(std::optional<QString> warning)
{
    if (assign(m_outputWarning, std::move(warning)))
        Q_EMIT outputWarningChanged();
}

void MainViewModel::setReportError(std::optional<QString> error)
{
    if (assign(m_reportError, std::move(error)))
        Q_EMIT reportErrorChanged();
}

void MainViewModel::setCompletionSummary(std::optional<CompletionSummary> summary)
{
    if (assign(m_completionSummary, std::move(summary)))
        Q_EMIT completionSummaryChanged();
}

void MainViewModel::stopForInstallationFault(const QString &reason)
{
    // Said first: whoever watches the run stopping must already know why.
    if (assign(m_installationProblem, std::optional(L::text(L::InstallationProblem, reason)))) {
        Q_EMIT installationProblemChanged();
        Q_EMIT derivedChanged();
    }
    m_processing.cancel();
    stopAnalysis();
    if (m_screenState == AppScreenState::Processing) {
        setScreenState(AppScreenState::Idle);
        m_processing.clearCurrentFileName();
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MainViewModel.h"

#include "app/BoundedTaskGroup.h"
#include "app/FolderRevealing.h"
#include "app/SupportPresenting.h"
#include "engine/AudioMetadata.h"
#include "engine/ErrorTranslator.h"
#include "engine/FFmpegError.h"
#include "engine/FFmpegRunner.h"
#include "engine/LoudnessAnalysisService.h"
#include "engine/LoudnessProcessingService.h"
#include "engine/PartFile.h"
#include "engine/ProcessingError.h"
#include "engine/ResourceLocator.h"
#include "engine/SystemError.h"
#include "files/CSVReportService.h"
#include "files/FileImportService.h"
#include "files/FilePanelPresenting.h"
#include "files/FolderScanner.h"
#include "files/NoFilePanels.h"
#include "files/OutputDestination.h"
#include "files/OutputPathService.h"
#include "files/UserPreferences.h"
#include "localization/L.h"
#include "model/StandardPath.h"

#include <cmath>
#include <set>
#include <utility>

namespace {

// Stand-ins where a front end has no screen: nothing is revealed, no window opens.

class NoReveal final : public FolderRevealing
{
public:
    void revealFolder(const QString &) override {}
};

class NoSupportWindow final : public SupportPresenting
{
public:
    void showSupport() override {}
};

QStringList extensionsOfAllFormats()
{
    QStringList extensions;
    for (SourceAudioFormat format : SourceAudioFormats::all)
        extensions.append(SourceAudioFormats::rawValue(format));
    return extensions;
}

// The reason a runner error gives when the bundled ffmpeg itself is at fault.
QString installationFaultOf(const FFmpegError &error)
{
    return error.kind() == FFmpegError::Kind::BinaryNotFound ? systemErrorText(ENOENT)
                                                             : error.systemDescription();
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

MainViewModel::Services
MainViewModel::Services::standard(std::shared_ptr<FilePanelPresenting> panelPresenter,
                                  std::shared_ptr<FolderRevealing> revealer,
                                  std::shared_ptr<SupportPresenting> supportPresenter)
{
    const std::optional<QString> ffmpeg = ResourceLocator().ffmpegPath();
    auto analysisRunner = std::make_shared<FFmpegRunner>(ffmpeg);
    auto processingRunner = std::make_shared<FFmpegRunner>(ffmpeg);
    auto processingAnalysisRunner = std::make_shared<FFmpegRunner>(ffmpeg);
    return {
        std::make_shared<FileImportService>(std::make_shared<FolderScanner>()),
        panelPresenter ? std::move(panelPresenter) : std::make_shared<NoFilePanels>(),
        std::make_shared<OutputPathService>(),
        OutputFolderBookmarkStore(std::shared_ptr<QSettings>(UserPreferences::open())),
        std::make_shared<LoudnessAnalysisService>(analysisRunner),
        std::make_shared<LoudnessProcessingService>(
            processingRunner, std::make_shared<LoudnessAnalysisService>(processingAnalysisRunner)),
        supportPresenter ? std::move(supportPresenter) : std::make_shared<NoSupportWindow>(),
        revealer ? std::move(revealer) : std::make_shared<NoReveal>(),
    };
}

MainViewModel::MainViewModel(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
{
    m_queue.setSelection(&m_selectedIDs);
    m_queue.setOutputMode(m_settings.outputFormatMode);
    // Jobs only wait on ffmpeg; several runs may overlap, three jobs each.
    m_pool.setMaxThreadCount(4 * maxParallelJobs);
}

MainViewModel::~MainViewModel()
{
    // Ends every ffmpeg child within a poll interval, so the wait below is short.
    m_analysisCancellation->cancel();
    m_processingCancellation->cancel();
    m_pool.waitForDone();
}

// ---- settings and derived values ----------------------------------------------------------------

void MainViewModel::setSettings(const ProcessingSettings &settings)
{
    if (settings == m_settings)
        return;
    const bool folderChanged = settings.outputFolder != m_settings.outputFolder;
    m_settings = settings;
    m_queue.setOutputMode(m_settings.outputFormatMode);
    if (folderChanged)
        revalidateOutputFolder();
    Q_EMIT settingsChanged();
    Q_EMIT derivedChanged();
}

std::optional<QString> MainViewModel::destinationOf(const QUuid &id) const
{
    const auto found = m_destinations.constFind(id);
    return found == m_destinations.cend() ? std::nullopt : std::optional(*found);
}

QList<QUuid> MainViewModel::effectiveTargetIDs() const
{
    QList<QUuid> selected;
    QList<QUuid> all;
    all.reserve(queue().size());
    for (const AudioFileItem &item : queue()) {
        all.append(item.id);
        if (m_selectedIDs.contains(item.id))
            selected.append(item.id);
    }
    return selected.isEmpty() ? all : selected;
}

int MainViewModel::folderCount() const
{
    return m_queue.folderCount();
}

bool MainViewModel::allSelected() const
{
    return !queue().isEmpty() && m_selectedIDs.size() == queue().size();
}

bool MainViewModel::canProcess() const
{
    return !queue().isEmpty() && m_settings.outputFolder.has_value() && !m_installationProblem;
}

bool MainViewModel::hasUnanalyzedFiles() const
{
    return m_queue.unmeasuredCount() > 0;
}

QString MainViewModel::processButtonTitle() const
{
    // Selection only ever holds queued ids.
    if (!m_selectedIDs.isEmpty())
        return L::text(L::ProcessSelected, static_cast<int>(m_selectedIDs.size()));
    if (!queue().isEmpty())
        return L::text(L::ProcessFiles, fileCount());
    return L::text(L::ProcessFilesNone);
}

QString MainViewModel::statusText() const
{
    switch (m_screenState) {
    case AppScreenState::Idle:
        return m_isAnalyzing ? L::text(L::AnalyzingProgress, analysisDone(), analysisTotal())
                             : L::text(L::FilesReady, fileCount());
    case AppScreenState::Processing:
        // Counted against the whole queue even when only a selection runs.
        return L::text(L::ProcessingProgress, m_processedCount, fileCount());
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

std::optional<QString> MainViewModel::noticeText(const ImportCounts &counts)
{
    QStringList parts;
    if (counts.added > 0)
        parts.append(L::text(L::Added, counts.added));
    if (counts.duplicates > 0)
        parts.append(L::text(L::AlreadyInQueue, counts.duplicates));
    if (counts.unsupported > 0)
        parts.append(L::text(L::UnsupportedIgnored, counts.unsupported));
    if (parts.isEmpty())
        return std::nullopt;
    return parts.join(QStringLiteral(" \u00b7 "));
}

void MainViewModel::retranslate()
{
    if (m_lastImport)
        setImportNotice(noticeText(*m_lastImport));
    revalidateOutputFolder();
    m_queue.retranslate();
    Q_EMIT derivedChanged();
}

// ---- queue
// ----------------------------------------------------------------------------------------

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
    importPaths(m_services.panelPresenter->presentFilePanel(extensionsOfAllFormats()));
}

void MainViewModel::selectFolder()
{
    const QStringList folders = m_services.panelPresenter->presentFolderPanel();
    if (!folders.isEmpty())
        importPaths(folders);
}

void MainViewModel::importURLs(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            paths.append(localPathOf(url));
    }
    // A drop of something that is no local file still says so.
    if (paths.size() < urls.size()) {
        for (qsizetype i = paths.size(); i < urls.size(); ++i)
            paths.append(QString());
    }
    importPaths(paths);
}

void MainViewModel::importPaths(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    ImportSummary summary = m_services.importService->importPaths(paths, queue());
    m_lastImport = ImportCounts{static_cast<int>(summary.items.size()), summary.duplicateCount,
                                summary.unsupportedCount};
    m_queue.append(summary.items);
    setImportNotice(noticeText(*m_lastImport));
    revalidateOutputFolder();
    analyzeQueue();
    Q_EMIT derivedChanged();
}

void MainViewModel::toggleSelection(const QString &id)
{
    toggleSelection(QUuid::fromString(id));
}

void MainViewModel::toggleSelection(const QUuid &id)
{
    if (m_selectedIDs.contains(id))
        m_selectedIDs.remove(id);
    else if (m_queue.find(id))
        m_selectedIDs.insert(id);
    else
        return;
    m_queue.selectionChanged({id});
    Q_EMIT derivedChanged();
}

void MainViewModel::toggleSelectAll()
{
    if (allSelected()) {
        m_selectedIDs.clear();
    } else {
        m_selectedIDs.clear();
        m_selectedIDs.reserve(queue().size());
        for (const AudioFileItem &item : queue())
            m_selectedIDs.insert(item.id);
    }
    m_queue.selectionChangedEverywhere();
    Q_EMIT derivedChanged();
}

void MainViewModel::removeItem(const QString &id)
{
    removeItem(QUuid::fromString(id));
}

void MainViewModel::removeItem(const QUuid &id)
{
    m_queue.remove({id});
    m_selectedIDs.remove(id);
    m_analyzingIDs.remove(id);
    revalidateOutputFolder();
    Q_EMIT derivedChanged();
}

void MainViewModel::removeSelected()
{
    if (m_selectedIDs.isEmpty())
        return;
    m_queue.remove(m_selectedIDs);
    m_analyzingIDs.subtract(m_selectedIDs);
    m_selectedIDs.clear();
    revalidateOutputFolder();
    Q_EMIT derivedChanged();
}

void MainViewModel::clearQueue()
{
    // Running analyses stop through the old token; later ones get a new one.
    m_analysisCancellation->cancel();
    m_analysisCancellation = std::make_shared<CancellationToken>();
    resetAnalysisState();
    m_queue.clear();
    m_selectedIDs.clear();
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
    if (!m_settings.outputFolder) {
        setOutputWarning(std::nullopt);
        return;
    }
    QStringList sources;
    sources.reserve(queue().size());
    for (const AudioFileItem &item : queue())
        sources.append(item.sourcePath);
    const QString root = standardizedPath(*m_settings.outputFolder);
    if (m_services.outputPathService->isInsideSourceTree(root, sources))
        setOutputWarning(L::text(L::WarnInsideSource));
    else if (!m_services.outputPathService->isWritable(*m_settings.outputFolder))
        setOutputWarning(L::text(L::WarnNotWritable));
    else
        setOutputWarning(std::nullopt);
}

ItemDetails MainViewModel::itemData(const QString &id) const
{
    const AudioFileItem *item = m_queue.find(QUuid::fromString(id));
    if (!item)
        return {};
    return {true,
            displayedPath(fileNameOf(item->sourcePath)),
            item->status.kind(),
            item->status.message(),
            item->errorDetails.value_or(QString()),
            item->result ? changeTexts(*item->result).join(u'\n') : QString()};
}

void MainViewModel::setStatus(const ProcessingStatus &status, const QUuid &id)
{
    m_queue.update(id, [&status](AudioFileItem &item) { item.status = status; });
}

// ---- analysis
// ---------------------------------------------------------------------------------------

void MainViewModel::analyzeQueue()
{
    if (m_installationProblem)
        return;
    std::vector<std::pair<QUuid, QString>> pending;
    for (const AudioFileItem &item : queue()) {
        if (!item.measurement && !m_analyzingIDs.contains(item.id))
            pending.emplace_back(item.id, item.sourcePath);
    }
    if (pending.empty())
        return;
    m_analysisProgress.second += static_cast<int>(pending.size());
    for (const auto &[id, path] : pending) {
        m_analyzingIDs.insert(id);
        setStatus(ProcessingStatus::analyzing(), id);
    }
    m_isAnalyzing = true;
    Q_EMIT analysisChanged();
    Q_EMIT derivedChanged();
    runAnalysis(std::move(pending));
}

void MainViewModel::stopAnalysis()
{
    m_analysisCancellation->cancel();
    m_analysisCancellation = std::make_shared<CancellationToken>();
    for (const QUuid &id : std::as_const(m_analyzingIDs))
        setStatus(ProcessingStatus::ready(), id);
    resetAnalysisState();
}

void MainViewModel::resetAnalysisState()
{
    m_analyzingIDs.clear();
    m_isAnalyzing = false;
    m_analysisProgress = {0, 0};
    Q_EMIT analysisChanged();
    Q_EMIT derivedChanged();
}

void MainViewModel::runAnalysis(std::vector<std::pair<QUuid, QString>> pending)
{
    using Entry = std::pair<QUuid, QString>;
    const CancellationTokenPtr token = m_analysisCancellation;
    const std::shared_ptr<const LoudnessAnalyzing> analyzer = m_services.analysisService;
    const double target = m_settings.effectiveTargetLUFS();
    const double ceiling = m_settings.truePeakCeiling;

    BoundedTaskGroup<Entry, AnalysisResult>::Callbacks callbacks;
    callbacks.work = [analyzer, token, target, ceiling](const Entry &entry) -> AnalysisResult {
        try {
            const std::optional<FileStamp> stamp = AudioMetadata::stamp(entry.second);
            LoudnessMeasurement measurement =
                analyzer->analyze(entry.second, target, ceiling, *token);
            // ffmpeg stopped half-way still prints what it measured of the part
            // it read; that is not the file's loudness.
            if (token->isCancelled() || !stamp)
                return {entry.first, std::nullopt, std::nullopt};
            return {entry.first, measurement, stamp};
        } catch (const FFmpegError &error) {
            if (error.kind() == FFmpegError::Kind::TimedOut)
                return {entry.first, std::nullopt, std::nullopt};
            return {entry.first, std::nullopt, std::nullopt, installationFaultOf(error)};
        } catch (...) {
            return {entry.first, std::nullopt, std::nullopt};
        }
    };
    callbacks.delivered = [this](const Entry &, AnalysisResult &&result) {
        if (result.installationFault) {
            stopForInstallationFault(*result.installationFault);
            return;
        }
        applyMeasurement(result);
        m_analyzingIDs.remove(result.id);
        ++m_analysisProgress.first;
        Q_EMIT analysisChanged();
        Q_EMIT derivedChanged();
    };
    callbacks.finished = [this] {
        // Other runs may still be going, or a cancelled run left entries unsent.
        if (m_analyzingIDs.isEmpty() && (m_isAnalyzing || m_analysisProgress != std::pair(0, 0)))
            resetAnalysisState();
    };
    BoundedTaskGroup<Entry, AnalysisResult>::start(this, &m_pool, maxParallelJobs,
                                                   std::move(pending), token, std::move(callbacks));
}

void MainViewModel::applyMeasurement(const AnalysisResult &result)
{
    m_queue.update(result.id, [&result](AudioFileItem &item) {
        if (const auto &measurement = result.measurement) {
            item.measurement = measurement;
            item.measuredStamp = result.stamp;
            item.measuredLUFS = std::isfinite(measurement->inputI)
                                    ? std::optional(measurement->inputI)
                                    : std::nullopt;
        }
        // A late answer must not undo what processing has since shown.
        if (item.status.kind() == ProcessingStatus::Kind::Analyzing)
            item.status = ProcessingStatus::ready();
    });
}

// ---- processing
// -------------------------------------------------------------------------------------

void MainViewModel::process()
{
    const QList<QUuid> targets = effectiveTargetIDs();
    if (targets.isEmpty() || !m_settings.outputFolder || m_installationProblem ||
        m_screenState == AppScreenState::Processing)
        return;
    // Analysis stops for good (its token stays cancelled until the queue is
    // cleared); what it had not reached yet is measured by the processing pass.
    m_analysisCancellation->cancel();
    for (const QUuid &id : std::as_const(m_analyzingIDs))
        setStatus(ProcessingStatus::ready(), id);
    m_analyzingIDs.clear();
    m_isAnalyzing = false;
    Q_EMIT analysisChanged();
    m_processingCancellation = std::make_shared<CancellationToken>();
    runProcessing(targets);
}

std::vector<MainViewModel::ProcessingJob> MainViewModel::resolveJobs(const QList<QUuid> &targets,
                                                                     const QString &outputRoot)
{
    std::vector<ProcessingJob> jobs;
    jobs.reserve(targets.size());
    QSet<QString> reserved;
    m_destinations.clear();
    for (const QUuid &id : targets) {
        const AudioFileItem *item = m_queue.find(id);
        if (!item)
            continue;
        const OutputDestination destination =
            OutputDestination::forItem(*item, m_settings, outputRoot, reserved);
        m_destinations.insert(id, destination.path);
        jobs.push_back({*item, destination.path, destination.encoding});
    }
    // What killed runs left in these folders goes now; a live run's files stay.
    QSet<QString> folders;
    for (const ProcessingJob &job : jobs)
        folders.insert(job.destination.left(job.destination.lastIndexOf(u'/')));
    for (const QString &folder : std::as_const(folders))
        PartFile::removeAbandoned(folder);
    return jobs;
}

void MainViewModel::runProcessing(const QList<QUuid> &targets)
{
    const ProcessingSettings settings = m_settings;
    const CancellationTokenPtr token = m_processingCancellation;
    const std::shared_ptr<const LoudnessProcessing> processor = m_services.processingService;
    auto jobs = std::make_shared<std::vector<ProcessingJob>>(
        resolveJobs(targets, *settings.outputFolder));
    const int run = ++m_run;

    m_processedCount = 0;
    m_runTotal = static_cast<int>(jobs->size());
    m_currentFileName.reset();
    if (m_completionSummary) {
        m_completionSummary.reset();
        Q_EMIT completionSummaryChanged();
    }
    setScreenState(AppScreenState::Processing);
    Q_EMIT processingProgressChanged();

    using Entry = size_t;
    std::vector<Entry> indices(jobs->size());
    for (size_t i = 0; i < indices.size(); ++i)
        indices[i] = i;

    BoundedTaskGroup<Entry, ProcessingOutput>::Callbacks callbacks;
    // Jobs run in queue order, so the first file still processing is the
    // lowest job index in flight; no walk over the queue per result.
    auto inFlight = std::make_shared<std::set<Entry>>();
    callbacks.submitted = [this, jobs, inFlight](const Entry &index) {
        inFlight->insert(index);
        setStatus(ProcessingStatus::processing(), (*jobs)[index].item.id);
    };
    callbacks.work = [processor, token, settings, jobs](const Entry &index) -> ProcessingOutput {
        const ProcessingJob &job = (*jobs)[index];
        try {
            return {job.item.id,
                    processor->process(job.item, job.destination, job.encoding, settings, *token),
                    nullptr};
        } catch (...) {
            return {job.item.id, std::nullopt, std::current_exception()};
        }
    };
    callbacks.delivered = [this, jobs, token, run, inFlight](const Entry &index,
                                                             ProcessingOutput &&output) {
        inFlight->erase(index);
        applyProcessingOutput(output, (*jobs)[index], token->isCancelled());
        if (run != m_run)
            return;
        ++m_processedCount;
        if (!inFlight->empty())
            m_currentFileName = fileNameOf((*jobs)[*inFlight->begin()].item.sourcePath);
        Q_EMIT processingProgressChanged();
        Q_EMIT derivedChanged();
    };
    callbacks.finished = [this, jobs, token, run, normalized = settings.normalizeLoudness] {
        if (run != m_run)
            return;
        if (token->isCancelled()) {
            setScreenState(AppScreenState::Idle);
            setCurrentFileName(std::nullopt);
            return;
        }
        m_completionSummary = summarize(*jobs, normalized);
        Q_EMIT completionSummaryChanged();
        finishToCompletion();
    };
    BoundedTaskGroup<Entry, ProcessingOutput>::start(
        this, &m_pool, maxParallelJobs, std::move(indices), token, std::move(callbacks));
}

void MainViewModel::applyProcessingOutput(const ProcessingOutput &output, const ProcessingJob &job,
                                          bool cancelled)
{
    const QString sourceName = displayedPath(fileNameOf(job.item.sourcePath));
    bool stopped = cancelled;
    if (output.error) {
        try {
            std::rethrow_exception(output.error);
        } catch (const ProcessingError &error) {
            stopped = stopped || error.kind() == ProcessingError::Kind::Cancelled;
        } catch (const FFmpegError &error) {
            // Not this file's fault: it goes back to the queue untouched.
            if (error.kind() != FFmpegError::Kind::TimedOut) {
                setStatus(ProcessingStatus::ready(), output.id);
                stopForInstallationFault(installationFaultOf(error));
                return;
            }
        } catch (...) {
        }
    }
    if (output.result && m_destinations.contains(output.id))
        m_destinations.insert(output.id,
                              job.destination.left(job.destination.lastIndexOf(u'/') + 1) +
                                  output.result->outputFileName);
    const bool updated = m_queue.update(output.id, [&](AudioFileItem &item) {
        if (output.result) {
            item.result = output.result;
            // Measured again when the file had changed since: show what was used.
            if (output.result->originalLUFS)
                item.measuredLUFS = output.result->originalLUFS;
            item.errorDetails.reset();
            const ProcessingOutcome outcome = output.result->outcome;
            item.status =
                outcome == ProcessingOutcome::PeakLimited || outcome == ProcessingOutcome::Clipped
                    ? ProcessingStatus::warning(output.result->warningMessage.value_or(
                          ProcessingOutcomes::rawValue(outcome)))
                    : ProcessingStatus::done();
            return;
        }
        // Whatever a job ends with once the user has cancelled is a
        // cancellation, never a failure: stopping ffmpeg half-way makes the
        // measuring pass or the encoder fail on purpose.
        ProcessingResult record;
        record.sourceFileName = sourceName;
        record.outputFileName = fileNameOf(job.destination);
        record.outcome = ProcessingOutcome::Cancelled;
        if (stopped) {
            item.status = ProcessingStatus::cancelled();
            item.errorDetails.reset();
        } else {
            FriendlyError friendly{L::text(L::DamagedMessage, sourceName), std::nullopt};
            try {
                std::rethrow_exception(output.error);
            } catch (const std::exception &error) {
                friendly = ErrorTranslator::translate(error, sourceName);
            } catch (...) {
            }
            item.status = ProcessingStatus::failed(friendly.message);
            item.errorDetails = friendly.details;
            record.outcome = ProcessingOutcome::Failed;
        }
        item.result = record;
    });
    if (updated)
        Q_EMIT itemFinished(output.id);
}

CompletionSummary MainViewModel::summarize(const std::vector<ProcessingJob> &jobs,
                                           bool normalized) const
{
    CompletionSummary summary;
    summary.normalized = normalized;
    for (const ProcessingJob &job : jobs) {
        const AudioFileItem *item = m_queue.find(job.item.id);
        if (!item || !item->result || item->result->outcome == ProcessingOutcome::Cancelled)
            continue;
        ++summary.totalProcessed;
        switch (item->result->outcome) {
        case ProcessingOutcome::Success:
        case ProcessingOutcome::Clipped: // written; its row says what it lost
            ++summary.reachedTarget;
            break;
        case ProcessingOutcome::PeakLimited:
            ++summary.peakLimited;
            break;
        case ProcessingOutcome::Failed:
            ++summary.failed;
            break;
        case ProcessingOutcome::Cancelled:
            break;
        }
    }
    return summary;
}

void MainViewModel::finishToCompletion()
{
    setScreenState(AppScreenState::Completed);
    if (m_settings.revealInFinderWhenComplete && m_settings.outputFolder && m_services.revealer)
        m_services.revealer->revealFolder(*m_settings.outputFolder);
}

void MainViewModel::cancelProcessing()
{
    m_processingCancellation->cancel();
    setScreenState(AppScreenState::Idle);
    setCurrentFileName(std::nullopt);
}

void MainViewModel::startNewBatch()
{
    clearQueue();
    if (m_completionSummary) {
        m_completionSummary.reset();
        Q_EMIT completionSummaryChanged();
    }
    m_processedCount = 0;
    Q_EMIT processingProgressChanged();
    setScreenState(AppScreenState::Idle);
}

void MainViewModel::exportReport()
{
    QList<ProcessingResult> results;
    for (const AudioFileItem &item : queue()) {
        if (item.result)
            results.append(*item.result);
    }
    if (results.isEmpty())
        return;
    const auto path = m_services.panelPresenter->presentSavePanel(
        QStringLiteral("Tonbrook Report.csv"), QStringLiteral("csv"));
    if (!path)
        return;
    if (const auto refusal = reportPathRefusal(*path)) {
        setReportError(*refusal);
        return;
    }
    const auto problem = CSVReportService::write(*path, results);
    setReportError(problem ? std::optional(L::text(L::ReportNotSaved, *problem)) : std::nullopt);
}

std::optional<QString> MainViewModel::reportPathRefusal(const QString &path) const
{
    const QString target = standardizedPath(path);
    bool isSource = false;
    for (const AudioFileItem &item : queue())
        isSource = isSource || standardizedPath(item.sourcePath) == target;
    if (isSource || CSVReportService::looksLikeAudio(target))
        return L::text(L::ReportOverAudioRefused, displayedPath(target));
    return std::nullopt;
}

void MainViewModel::waitForBackgroundWork()
{
    m_pool.waitForDone();
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

void MainViewModel::stopForInstallationFault(const QString &reason)
{
    // Said first: whoever watches the run stopping must already know why.
    if (assign(m_installationProblem, std::optional(L::text(L::InstallationProblem, reason)))) {
        Q_EMIT installationProblemChanged();
        Q_EMIT derivedChanged();
    }
    m_processingCancellation->cancel();
    stopAnalysis();
    if (m_screenState == AppScreenState::Processing) {
        setScreenState(AppScreenState::Idle);
        setCurrentFileName(std::nullopt);
    }
}

QStringList MainViewModel::changeTexts(const ProcessingResult &result)
{
    const QString format = result.outputFileName.section(u'.', -1).toUpper();
    QStringList texts;
    for (const OutputChange &change : result.changes)
        texts.append(change.kind == OutputChange::Kind::SampleRate
                         ? L::sampleRateChanged(change.from, change.to, format)
                         : L::text(L::ChannelsChanged, change.from, change.to, format));
    if (!result.notKept.isEmpty())
        texts.append(L::notKept(result.notKept, format));
    return texts;
}

void MainViewModel::setCurrentFileName(std::optional<QString> name)
{
    if (assign(m_currentFileName, std::move(name)))
        Q_EMIT processingProgressChanged();
}

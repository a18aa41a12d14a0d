// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliSession.h"

#include "app/MainViewModel.h"
#include "localization/L.h"
#include "model/NumberFormat.h"
#include "model/StandardPath.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int exitInterrupted = 128 + SIGINT;
constexpr int exitUsage = 2;
constexpr int exitInstallation = 3;

QString figure(const std::optional<double> &value, bool withSign = false)
{
    if (!value || !std::isfinite(*value))
        return QStringLiteral("\u2014");
    return withSign ? NumberFormat::signedFixed(*value, 1) : NumberFormat::fixed(*value, 1);
}

QJsonValue number(std::optional<double> value)
{
    return value && std::isfinite(*value) ? QJsonValue(*value) : QJsonValue();
}

QJsonValue text(const std::optional<QString> &value)
{
    return value ? QJsonValue(*value) : QJsonValue();
}

// What the encoder's limits changed: the fact in numbers, and the sentence.
QJsonArray changes(const ProcessingResult &result)
{
    const QStringList sentences = L::changeTexts(result);
    QJsonArray list;
    for (qsizetype i = 0; i < result.changes.size(); ++i) {
        const OutputChange &change = result.changes.at(i);
        list.append(
            QJsonObject{{QStringLiteral("what"), change.kind == OutputChange::Kind::SampleRate
                                                     ? QStringLiteral("sampleRate")
                                                     : QStringLiteral("channels")},
                        {QStringLiteral("from"), change.from},
                        {QStringLiteral("to"), change.to},
                        {QStringLiteral("why"), sentences.value(i)}});
    }
    return list;
}

} // namespace

CliSession::CliSession(CliOptions options, std::unique_ptr<MainViewModel> controller)
    : m_options(std::move(options))
    , m_controller(std::move(controller))
    , m_out(stdout)
    , m_err(stderr)
    , m_interactive(::isatty(STDERR_FILENO) == 1)
{
    m_controller->setSettings(m_options.settings);
    connect(m_controller.get(), &MainViewModel::analysisChanged, this, &CliSession::analysisMoved);
    connect(m_controller.get(), &MainViewModel::itemFinished, this, &CliSession::itemFinished);
    connect(m_controller.get(), &MainViewModel::screenStateChanged, this,
            &CliSession::screenChanged);
    connect(m_controller.get(), &MainViewModel::processingProgressChanged, this,
            &CliSession::showProgress);
}

CliSession::~CliSession() = default;

void CliSession::start()
{
    for (const QString &path : std::as_const(m_options.paths)) {
        struct stat info
        {};
        if (::stat(encodedPath(path).constData(), &info) != 0) {
            m_err << "tonbrook-cli: " << L::text(L::CliNoSuchPath, displayedPath(path)) << Qt::endl;
            m_pathStatus = 1;
        }
    }
    // The import starts measuring at once; its notice is printed before any progress.
    m_started = false;
    m_controller->importPaths(m_options.paths);
    m_started = true;
    if (const auto notice = m_controller->importNotice(); notice && !m_options.json)
        m_out << *notice << Qt::endl;
    if (m_controller->queue().isEmpty()) {
        m_err << "tonbrook-cli: " << L::text(L::CliNothingImported) << Qt::endl;
        end(exitUsage);
        return;
    }
    if (m_options.reportPath) {
        if (const auto refusal = m_controller->reportPathRefusal(*m_options.reportPath)) {
            m_err << "tonbrook-cli: " << *refusal << Qt::endl;
            // Ended first: the last measurement stopping must not start the run.
            end(exitUsage);
            m_controller->stopAnalysis();
            m_controller->waitForBackgroundWork();
            return;
        }
    }
    if (const auto warning = m_controller->outputWarning(); warning && !m_options.analyzeOnly)
        m_err << "tonbrook-cli: " << L::text(L::CliWarning, *warning) << Qt::endl;
    showProgress();
    if (!m_controller->isAnalyzing())
        analysisMoved();
}

void CliSession::analysisMoved()
{
    if (m_ended || m_interrupted || m_processing || !m_started)
        return;
    showProgress();
    if (m_controller->isAnalyzing())
        return;
    clearProgress();
    if (endedByInstallationProblem())
        return;
    if (m_options.analyzeOnly)
        finishAnalyzeOnly();
    else
        beginProcessing();
}

void CliSession::beginProcessing()
{
    m_processing = true;
    m_controller->process();
    if (m_controller->screenState() != AppScreenState::Processing)
        finishRun(); // nothing could start
}

void CliSession::itemFinished(const QUuid &id)
{
    if (m_options.json)
        return;
    const AudioFileItem *item = m_controller->queueModel()->find(id);
    if (!item)
        return;
    clearProgress();
    QString line = displayedPath(fileNameOf(item->sourcePath)) + QStringLiteral(" \u2014 ") +
                   L::statusName(item->status.kind());
    const auto &result = item->result;
    if (result && (result->appliedGain || result->finalLUFS))
        line += QStringLiteral(" \u2014 ") +
                L::text(L::CliFigures, figure(result->originalLUFS), figure(result->finalLUFS),
                        figure(result->appliedGain, true), figure(result->truePeak));
    if (!item->status.message().isEmpty())
        line += QStringLiteral(" \u2014 ") + QString(item->status.message()).replace(u'\n', u' ');
    m_out << line << Qt::endl;
    showProgress();
}

void CliSession::screenChanged()
{
    if (m_processing && !m_interrupted && m_controller->screenState() != AppScreenState::Processing)
        finishRun();
}

void CliSession::finishAnalyzeOnly()
{
    int unmeasured = 0;
    if (m_options.json) {
        printJson();
    }
    for (const AudioFileItem &item : m_controller->queue()) {
        if (!item.measurement)
            ++unmeasured;
        if (m_options.json)
            continue;
        const QString measured =
            item.measurement
                ? L::text(L::CliMeasured, figure(item.measurement->inputI),
                          figure(item.measurement->inputTP), figure(item.measurement->inputLRA))
                : L::text(L::CliNotMeasured);
        m_out << displayedPath(item.relativePath) << QStringLiteral(" \u2014 ") << measured
              << Qt::endl;
    }
    end(std::max(m_pathStatus, unmeasured > 0 ? 1 : 0));
}

void CliSession::finishRun()
{
    if (m_ended)
        return;
    clearProgress();
    if (endedByInstallationProblem())
        return;
    const auto summary = m_controller->completionSummary();
    if (!summary) {
        // Cancelled (or nothing ran): no summary, as in the window.
        if (m_options.json)
            printJson();
        end(exitInterrupted);
        return;
    }
    if (m_options.json) {
        printJson();
    } else {
        m_out << L::text(L::ProcessingComplete) << Qt::endl
              << L::text(L::FilesProcessed, summary->totalProcessed) << Qt::endl
              << (summary->normalized ? L::text(L::ReachedTarget, summary->reachedTarget)
                                      : L::text(L::Converted, summary->reachedTarget))
              << Qt::endl;
        if (summary->peakLimited > 0)
            m_out << L::text(L::PeakLimited, summary->peakLimited) << Qt::endl;
        if (summary->failed > 0)
            m_out << L::text(L::FailedCount, summary->failed) << Qt::endl;
        if (summary->skipped > 0)
            m_out << L::text(L::SkippedExisting, summary->skipped) << Qt::endl;
    }
    int status = std::max(m_pathStatus, summary->failed > 0 ? 1 : 0);
    if (m_options.reportPath) {
        m_controller->exportReport();
        if (const auto problem = m_controller->reportError()) {
            m_err << "tonbrook-cli: " << *problem << Qt::endl;
            status = 1;
        } else if (!m_options.json) {
            m_out << L::text(L::CliReportWritten, *m_options.reportPath) << Qt::endl;
        }
    }
    end(status);
}

bool CliSession::endedByInstallationProblem()
{
    const auto problem = m_controller->installationProblem();
    if (!problem)
        return false;
    m_err << "tonbrook-cli: " << *problem << Qt::endl;
    if (m_options.json)
        printJson();
    end(exitInstallation);
    return true;
}

void CliSession::interrupt(int signal)
{
    if (m_ended || m_interrupted)
        return;
    // From here on nothing starts: no processing after an interrupted
    // measurement, no second summary.
    m_interrupted = true;
    if (m_controller->screenState() == AppScreenState::Processing)
        m_controller->cancelProcessing();
    else
        m_controller->stopAnalysis();
    // Every child is stopped and every hidden file removed before we go;
    // then the answers already on their way are applied.
    m_controller->waitForBackgroundWork();
    QCoreApplication::processEvents();
    clearProgress();
    m_err << L::text(L::CancelledMessage) << Qt::endl;
    if (m_options.json)
        printJson();
    end(128 + signal);
}

void CliSession::end(int status)
{
    if (m_ended)
        return;
    m_ended = true;
    m_out.flush();
    m_err.flush();
    Q_EMIT finished(status);
}

void CliSession::showProgress()
{
    if (!m_interactive || m_ended || m_options.json || !m_started)
        return;
    QString line;
    if (m_controller->screenState() == AppScreenState::Processing) {
        line = L::text(L::ProcessingProgress, m_controller->processedCount(),
                       m_controller->runTotal());
        if (const auto name = m_controller->currentFileName())
            line += QStringLiteral("  ") + *name;
    } else if (m_controller->isAnalyzing()) {
        line = L::text(L::AnalyzingProgress, m_controller->analysisDone(),
                       m_controller->analysisTotal());
    } else {
        return;
    }
    const int done = m_processing ? m_controller->processedCount() : m_controller->analysisDone();
    const int total =
        std::max(1, m_processing ? m_controller->runTotal() : m_controller->analysisTotal());
    constexpr int width = 24;
    const int filled = std::min(width, done * width / total);
    const QString bar = u'[' + QString(filled, u'#') + QString(width - filled, u'.') + u']';
    m_err << "\r\033[K" << bar << ' ' << line.left(100);
    m_err.flush();
    m_progressShown = true;
}

void CliSession::clearProgress()
{
    if (!m_progressShown)
        return;
    m_err << "\r\033[K";
    m_err.flush();
    m_progressShown = false;
}

void CliSession::printJson()
{
    for (const AudioFileItem &item : m_controller->queue()) {
        QJsonObject object;
        // Bytes of a name that is not UTF-8 travel as \udcXX escapes, which
        // a reader's surrogate escape (Python's os.fsencode) turns back into them.
        object.insert(QStringLiteral("source"), item.sourcePath);
        object.insert(QStringLiteral("relativePath"), item.relativePath);
        object.insert(QStringLiteral("status"), ProcessingStatus::rawValue(item.status.kind()));
        object.insert(QStringLiteral("message"), item.status.message().isEmpty()
                                                     ? QJsonValue()
                                                     : QJsonValue(item.status.message()));
        if (const auto &m = item.measurement) {
            object.insert(QStringLiteral("measurement"),
                          QJsonObject{{QStringLiteral("inputI"), number(m->inputI)},
                                      {QStringLiteral("inputTP"), number(m->inputTP)},
                                      {QStringLiteral("inputLRA"), number(m->inputLRA)},
                                      {QStringLiteral("inputThresh"), number(m->inputThresh)},
                                      {QStringLiteral("targetOffset"), number(m->targetOffset)}});
        } else {
            object.insert(QStringLiteral("measurement"), QJsonValue());
        }
        if (const auto &r = item.result) {
            object.insert(
                QStringLiteral("result"),
                QJsonObject{{QStringLiteral("sourceFileName"), r->sourceFileName},
                            {QStringLiteral("outputFileName"), r->outputFileName},
                            {QStringLiteral("originalLUFS"), number(r->originalLUFS)},
                            {QStringLiteral("finalLUFS"), number(r->finalLUFS)},
                            {QStringLiteral("appliedGain"), number(r->appliedGain)},
                            {QStringLiteral("truePeak"), number(r->truePeak)},
                            {QStringLiteral("outcome"), ProcessingOutcomes::rawValue(r->outcome)},
                            {QStringLiteral("warningMessage"), text(r->warningMessage)},
                            {QStringLiteral("measured"), r->measured},
                            {QStringLiteral("changes"), changes(*r)},
                            {QStringLiteral("notKept"), QJsonArray::fromStringList(r->notKept)}});
        } else {
            object.insert(QStringLiteral("result"), QJsonValue());
        }
        // Written by this run, or left from an earlier one.
        const bool written = item.status.kind() == ProcessingStatus::Kind::Done ||
                             item.status.kind() == ProcessingStatus::Kind::Warning ||
                             item.status.kind() == ProcessingStatus::Kind::Skipped;
        const auto output = m_controller->destinationOf(item.id);
        object.insert(QStringLiteral("output"),
                      written && output ? QJsonValue(*output) : QJsonValue());
        object.insert(QStringLiteral("errorDetails"), text(item.errorDetails));
        m_out << QJsonDocument(object).toJson(QJsonDocument::Compact) << '\n';
    }
    m_out.flush();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// A controller on stand-in services whose jobs wait until the test releases
// them, so that what runs when can be asserted without sleeping.

#include "app/FolderRevealing.h"
#include "app/MainViewModel.h"
#include "app/SupportPresenting.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/LoudnessProcessing.h"
#include "engine/ProcessingError.h"
#include "files/FileImportService.h"
#include "files/FilePanelPresenting.h"
#include "files/FolderScanner.h"
#include "files/OutputPathService.h"
#include "model/StandardPath.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>

// Jobs, keyed by file name, that wait for an answer (or for their token).
template<typename Answer>
class JobGate
{
public:
    Answer await(const QString &key, const CancellationToken &token, Answer whenCancelled)
    {
        std::unique_lock lock(m_mutex);
        m_started.append(key);
        m_running.insert(key);
        for (;;) {
            if (auto found = m_answers.find(key); found != m_answers.end()) {
                Answer answer = found->second;
                m_answers.erase(found);
                m_running.remove(key);
                return answer;
            }
            if (token.isCancelled()) {
                m_running.remove(key);
                m_cancelled.append(key);
                return whenCancelled;
            }
            // How the real runner notices a token: by looking at it now and then.
            m_changed.wait_for(lock, std::chrono::milliseconds(5));
        }
    }

    void release(const QString &key, Answer answer)
    {
        const std::lock_guard lock(m_mutex);
        m_answers[key] = std::move(answer);
        m_changed.notify_all();
    }

    QStringList started() const
    {
        const std::lock_guard lock(m_mutex);
        return m_started;
    }

    QStringList running() const
    {
        const std::lock_guard lock(m_mutex);
        QStringList keys(m_running.cbegin(), m_running.cend());
        keys.sort();
        return keys;
    }

    QStringList cancelled() const
    {
        const std::lock_guard lock(m_mutex);
        return m_cancelled;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::map<QString, Answer> m_answers;
    QStringList m_started;
    QSet<QString> m_running;
    QStringList m_cancelled;
};

// Answers with the measurement released for a file, or fails for nullopt.
class GatedAnalyzer final : public LoudnessAnalyzing
{
public:
    using Answer = std::optional<LoudnessMeasurement>;
    JobGate<Answer> gate;

    LoudnessMeasurement analyze(const QString &filePath, double, double,
                                const CancellationToken &cancellation) const override
    {
        const Answer answer = const_cast<JobGate<Answer> &>(gate).await(fileNameOf(filePath),
                                                                        cancellation, std::nullopt);
        if (!answer)
            throw ProcessingError::analysisFailed(QStringLiteral("no measurement"));
        return *answer;
    }
};

// Answers with what the released function returns or throws; a cancelled
// job ends the way the real service ends one.
class GatedProcessor final : public LoudnessProcessing
{
public:
    using Answer = std::function<ProcessingResult()>;
    JobGate<Answer> gate;

    ProcessingResult process(const AudioFileItem &item, const QString &destination,
                             const OutputEncoding &, const ProcessingSettings &,
                             const CancellationToken &cancellation) const override
    {
        {
            const std::lock_guard lock(m_mutex);
            m_destinations.insert(fileNameOf(item.sourcePath), destination);
        }
        const Answer answer = const_cast<JobGate<Answer> &>(gate).await(
            fileNameOf(item.sourcePath), cancellation,
            []() -> ProcessingResult { throw ProcessingError::cancelled(); });
        return answer();
    }

    QString destinationOf(const QString &name) const
    {
        const std::lock_guard lock(m_mutex);
        return m_destinations.value(name);
    }

    static Answer writes(ProcessingOutcome outcome = ProcessingOutcome::Success)
    {
        return [outcome] {
            ProcessingResult result{QStringLiteral("x.wav"),
                                    QStringLiteral("x.wav"),
                                    -20.0,
                                    -14.0,
                                    6.0,
                                    -1.0,
                                    outcome,
                                    {}};
            if (outcome == ProcessingOutcome::PeakLimited)
                result.warningMessage = QStringLiteral("Target -20.00 \u2192 held back");
            return result;
        };
    }

    static Answer fails(ProcessingError error)
    {
        return [error]() -> ProcessingResult { throw error; };
    }

private:
    mutable std::mutex m_mutex;
    mutable QHash<QString, QString> m_destinations;
};

class ScriptedPanels final : public FilePanelPresenting
{
public:
    QStringList files;
    QStringList folders;
    std::optional<QString> destination;
    std::optional<QString> savePath;
    int saveRequests = 0;

    QStringList presentFilePanel(const QStringList &) override { return files; }
    QStringList presentFolderPanel() override { return folders; }
    std::optional<QString> presentDestinationFolderPanel() override { return destination; }
    std::optional<QString> presentSavePanel(const QString &, const QString &) override
    {
        ++saveRequests;
        return savePath;
    }
};

class RecordingRevealer final : public FolderRevealing
{
public:
    QStringList revealed;
    void revealFolder(const QString &path) override { revealed.append(path); }
};

class ControllerFixture
{
public:
    std::shared_ptr<GatedAnalyzer> analyzer = std::make_shared<GatedAnalyzer>();
    std::shared_ptr<GatedProcessor> processor = std::make_shared<GatedProcessor>();
    std::shared_ptr<ScriptedPanels> panels = std::make_shared<ScriptedPanels>();
    std::shared_ptr<RecordingRevealer> revealer = std::make_shared<RecordingRevealer>();
    std::shared_ptr<QSettings> preferences;
    QTemporaryDir dir;
    std::unique_ptr<MainViewModel> controller;

    ControllerFixture()
    {
        preferences = std::make_shared<QSettings>(dir.filePath(QStringLiteral("preferences.ini")),
                                                  QSettings::IniFormat);
        controller = std::make_unique<MainViewModel>(
            AppServices{.panelPresenter = panels,
                        .bookmarkStore = OutputFolderBookmarkStore(preferences),
                        .analysisService = analyzer,
                        .processingService = processor,
                        .revealer = revealer});
    }

    MainViewModel &vm() { return *controller; }

    // Empty files are enough: the stand-ins never read them.
    QStringList files(const QStringList &relativePaths)
    {
        QStringList paths;
        for (const QString &relative : relativePaths) {
            const QString path = dir.filePath(QStringLiteral("in/") + relative);
            QDir().mkpath(QFileInfo(path).path());
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            paths.append(path);
        }
        return paths;
    }

    QStringList numberedFiles(int count, const QString &stem = QStringLiteral("Take"))
    {
        QStringList names;
        for (int i = 1; i <= count; ++i)
            names.append(QStringLiteral("%1 %2.wav").arg(stem).arg(i));
        return files(names);
    }

    // Queues "Take 1.wav"… and measures each; true once the measuring is over.
    bool importMeasured(int count)
    {
        controller->importPaths(numberedFiles(count));
        for (int i = 1; i <= count; ++i)
            analyzer->gate.release(QStringLiteral("Take %1.wav").arg(i), measured());
        return QTest::qWaitFor([this] { return !controller->isAnalyzing(); });
    }

    // The queued item with this file name; an empty one (null id) when there is none.
    AudioFileItem item(const QString &fileName) const
    {
        for (const AudioFileItem &entry : controller->queue())
            if (fileNameOf(entry.sourcePath) == fileName)
                return entry;
        return {QUuid(),
                {},
                {},
                SourceAudioFormat::Wav,
                AudioCategory::Other,
                {},
                {},
                OutputFormatMode::KeepOriginal,
                ProcessingStatus::ready(),
                {},
                {},
                {}};
    }

    QUuid idOf(const QString &fileName) const { return item(fileName).id; }
    ProcessingStatus::Kind statusOf(const QString &fileName) const
    {
        return item(fileName).status.kind();
    }

    void setOutputFolder()
    {
        ProcessingSettings settings = controller->settings();
        settings.outputFolder = dir.filePath(QStringLiteral("out"));
        controller->setSettings(settings);
    }

    static LoudnessMeasurement measured(double loudness = -20.0)
    {
        return {loudness, -6.0, 5.0, -30.0, 0.0};
    }
};

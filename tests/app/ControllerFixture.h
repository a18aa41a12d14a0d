// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// A controller on stand-in services whose jobs wait until the test releases
// them, so that what runs when can be asserted without sleeping.

#include "GatedAnalyzer.h"
#include "GatedProcessor.h"
#include "RecordingNotifier.h"
#include "RecordingRevealer.h"
#include "ScriptedPanels.h"
#include "app/MainViewModel.h"
#include "engine/ProcessingError.h"
#include "model/StandardPath.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

class ControllerFixture
{
public:
    std::shared_ptr<GatedAnalyzer> analyzer = std::make_shared<GatedAnalyzer>();
    std::shared_ptr<GatedProcessor> processor = std::make_shared<GatedProcessor>();
    std::shared_ptr<ScriptedPanels> panels = std::make_shared<ScriptedPanels>();
    std::shared_ptr<RecordingRevealer> revealer = std::make_shared<RecordingRevealer>();
    std::shared_ptr<RecordingNotifier> notifier = std::make_shared<RecordingNotifier>();
    std::shared_ptr<QSettings> preferences;
    QTemporaryDir dir;
    std::unique_ptr<MainViewModel> controller;

    // Three jobs at a time unless told otherwise, whatever the machine.
    explicit ControllerFixture(int parallelJobs = 3)
    {
        preferences = std::make_shared<QSettings>(dir.filePath(QStringLiteral("preferences.ini")),
                                                  QSettings::IniFormat);
        controller = std::make_unique<MainViewModel>(
            AppServices{.panelPresenter = panels,
                        .bookmarkStore = OutputFolderBookmarkStore(preferences),
                        .analysisService = analyzer,
                        .processingService = processor,
                        .revealer = revealer,
                        .notifier = notifier,
                        .parallelJobs = parallelJobs});
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
        return {};
    }

    QUuid idOf(const QString &fileName) const { return item(fileName).id; }
    ProcessingStatus::Kind statusOf(const QString &fileName) const
    {
        return item(fileName).status.kind();
    }

    // What a queue cell says of a file.
    QString cellOf(const QString &fileName, QueueModel::Role role) const
    {
        const auto row = controller->queueModel()->rowOf(idOf(fileName));
        return row ? controller->queueModel()
                         ->data(controller->queueModel()->index(*row), role)
                         .toString()
                   : QString();
    }
    QString loudnessTextOf(const QString &fileName) const
    {
        return cellOf(fileName, QueueModel::LoudnessTextRole);
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

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// A controller on stand-in services whose jobs wait until the test releases
// them, so that what runs when can be asserted without sleeping. The window
// tests put the window's own controller on the same stand-ins.

#include "DesktopStandIns.h"
#include "GatedServices.h"
#include "app/MainViewModel.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class ControllerFixture
{
public:
    std::shared_ptr<GatedAnalyzer> analyzer = std::make_shared<GatedAnalyzer>();
    std::shared_ptr<GatedProcessor> processor = std::make_shared<GatedProcessor>();
    std::shared_ptr<ScriptedPanels> panels = std::make_shared<ScriptedPanels>();
    std::shared_ptr<RecordingRevealer> revealer = std::make_shared<RecordingRevealer>();
    std::shared_ptr<RecordingNotifier> notifier = std::make_shared<RecordingNotifier>();
    QTemporaryDir dir;
    std::shared_ptr<QSettings> preferences = std::make_shared<QSettings>(
        dir.filePath(QStringLiteral("preferences.ini")), QSettings::IniFormat);
    std::unique_ptr<MainViewModel> controller;
    // The controller under test: this fixture's own, or a window's.
    MainViewModel *model = nullptr;

    // Three jobs at a time unless told otherwise, whatever the machine; 0: no controller.
    explicit ControllerFixture(int parallelJobs = 3)
    {
        if (parallelJobs > 0) {
            controller = std::make_unique<MainViewModel>(services(parallelJobs));
            model = controller.get();
        }
    }

    AppServices services(int parallelJobs = 3) const
    {
        return {.panelPresenter = panels,
                .bookmarkStore = OutputFolderBookmarkStore(preferences),
                .settingsStore = SettingsStore(preferences),
                .analysisService = analyzer,
                .processingService = processor,
                .revealer = revealer,
                .notifier = notifier,
                .parallelJobs = parallelJobs};
    }

    MainViewModel &vm() { return *model; }

    static QString take(int number) { return QStringLiteral("Take %1.wav").arg(number); }
    static QStringList takes(int first, int last)
    {
        QStringList names;
        for (int number = first; number <= last; ++number)
            names.append(take(number));
        return names;
    }

    // Empty files under in/ (the stand-ins never read them); their paths.
    QStringList files(const QStringList &relativePaths) const
    {
        QStringList paths;
        for (const QString &relative : relativePaths) {
            paths.append(dir.filePath(QStringLiteral("in/") + relative));
            QDir().mkpath(QFileInfo(paths.last()).path());
            QFile(paths.last()).open(QIODevice::WriteOnly);
        }
        return paths;
    }
    QStringList numberedFiles(int count) const { return files(takes(1, count)); }

    // Every file still to be measured at -20 LUFS; true once measuring is over.
    bool measureAll()
    {
        for (const AudioFileItem &entry : vm().queue())
            if (entry.needsMeasuring())
                analyzer->release({fileNameOf(entry.sourcePath)}, GatedAnalyzer::measures());
        return QTest::qWaitFor([this] { return !vm().isAnalyzing(); });
    }

    // Queues these files, or "Take 1.wav"…, and measures each.
    bool importMeasured(const QStringList &relativePaths)
    {
        vm().importPaths(files(relativePaths));
        return measureAll();
    }
    bool importMeasured(int count) { return importMeasured(takes(1, count)); }

    void setOutputFolder()
    {
        ProcessingSettings settings = vm().settings();
        settings.outputFolder = dir.filePath(QStringLiteral("out"));
        vm().setSettings(settings);
    }

    // One letter per queued file, in queue order: r(eady), q(ueued), a(nalyzing),
    // p(rocessing), d(one), w(arning), f(ailed), c(ancelled), s(kipped).
    QString statuses() const
    {
        QString letters;
        for (const AudioFileItem &entry : model->queue())
            letters += ProcessingStatus::rawValue(entry.status.kind()).at(0);
        return letters;
    }

    // The queued item with this file name; an empty one (null id) when there is none.
    AudioFileItem item(const QString &fileName) const
    {
        for (const AudioFileItem &entry : model->queue())
            if (fileNameOf(entry.sourcePath) == fileName)
                return entry;
        return {};
    }

    // What a queue cell says of a file.
    QString cell(const QString &fileName, QueueModel::Role role) const
    {
        QueueModel &queue = *model->queueModel();
        const auto row = queue.rowOf(item(fileName).id);
        return row ? queue.data(queue.index(*row), role).toString() : QString();
    }
};

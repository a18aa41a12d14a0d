// SPDX-License-Identifier: GPL-3.0-or-later
//
// Renders every screen, sheet and menu of the window, in English and in
// Russian, to PNG files, for reviewers to look at. The controller runs on
// stand-in services that answer at once (or hold a file, to show it running),
// over a realistic queue of empty files in a scratch folder.
//
// usage: tonbrook-screenshot-tour OUTPUT_DIR
#include "ScriptedAnalyzer.h"
#include "ScriptedProcessor.h"
#include "app/MainViewModel.h"
#include "engine/LoudnessAnalyzing.h"
#include "engine/LoudnessProcessing.h"
#include "engine/ProcessingError.h"
#include "files/FileImportService.h"
#include "files/FolderScanner.h"
#include "files/NoFilePanels.h"
#include "files/OutputPathService.h"
#include "localization/LanguageManager.h"
#include "model/StandardPath.h"
#include "ui/SupportWindowPresenter.h"
#include "ui/TonbrookApp.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <atomic>
#include <thread>

Q_IMPORT_QML_PLUGIN(Tonbrook_AppPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_LocalizationPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_StylePlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_UiPlugin)

namespace {

std::atomic<bool> holdProcessing{false};
std::atomic<bool> holdMeasuring{false};

// Loudness derived from the name, so every run looks the same.
double loudnessOf(const QString &path)
{
    return -14.0 - static_cast<double>(qHash(fileNameOf(path)) % 220) / 10.0;
}

// Loudness from the name; "Room tone" files measure until cancelled.
LoudnessMeasurement standInMeasurement(const QString &path, const CancellationToken &token)
{
    if (fileNameOf(path).startsWith(QStringLiteral("Room tone")) || holdMeasuring)
        while (!token.isCancelled() && (holdMeasuring || fileNameOf(path).startsWith(u"Room tone")))
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    if (fileNameOf(path).contains(QStringLiteral("corrupt")))
        throw ProcessingError::analysisFailed(QStringLiteral("no measurement"));
    const double loudness = loudnessOf(path);
    return {loudness, loudness + 13.5, 6.2, loudness - 10, 0};
}

// Results from the name: "Kick" files are held by the ceiling, "corrupt" ones fail.
ProcessingResult standInResult(const AudioFileItem &item, const QString &destination,
                               const ProcessingSettings &settings, const CancellationToken &token)
{
    while (holdProcessing && !token.isCancelled())
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    if (token.isCancelled())
        throw ProcessingError::cancelled();
    const QString name = fileNameOf(item.sourcePath);
    if (name.contains(QStringLiteral("corrupt")))
        throw ProcessingError::ffmpegFailed(
            183, QStringLiteral("[in#0 @ 0x55d0] Error opening input: Invalid data found when "
                                "processing input\n"
                                "Error opening input file ") +
                     item.sourcePath + QStringLiteral(".\n"));
    const double loudness = loudnessOf(item.sourcePath);
    const double target = settings.effectiveTargetLUFS();
    const bool limited = name.startsWith(QStringLiteral("Kick"));
    const double final = limited ? loudness + 4 : target;
    ProcessingResult result{.sourceFileName = name,
                            .outputFileName = fileNameOf(destination),
                            .originalLUFS = loudness,
                            .finalLUFS = final,
                            .appliedGain = final - loudness,
                            .truePeak = limited ? -1.0 : final - loudness + loudness + 13.5,
                            .outcome = limited ? ProcessingOutcome::PeakLimited
                                               : ProcessingOutcome::Success};
    // A high-rate source kept as MP3: the encoder's limit is said.
    if (name.endsWith(QStringLiteral(".mp3")))
        result.changes = {{OutputChange::Kind::SampleRate, 96000, 48000}};
    if (limited)
        result.warningMessage =
            QStringLiteral("Target %1 \u2192 could not reach target without exceeding the "
                           "true peak ceiling. Normalized to the highest safe level.")
                .arg(loudness, 0, 'f', 2);
    return result;
}

void settle(int milliseconds = 350)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

QObject *find(QQuickWindow *window, const char *name)
{
    return window->findChild<QObject *>(QLatin1StringView(name));
}

void shoot(QQuickWindow *window, const QString &path)
{
    settle();
    window->grabWindow().save(path);
    qInfo("%s", qPrintable(path));
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QUICK_BACKEND", "software");
    QApplication app(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    if (argc < 2) {
        qWarning("usage: tonbrook-screenshot-tour OUTPUT_DIR");
        return 2;
    }
    const QString out = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    QDir().mkpath(out);

    QTemporaryDir scratch;
    const QString session = scratch.filePath(QStringLiteral("Theatre Session"));
    const QStringList files{
        QStringLiteral("Act 1/Ambience/Room tone.wav"),
        QStringLiteral("Act 1/Ambience/Rain on windows.aiff"),
        QStringLiteral("Act 1/Cues/Door slam.wav"),
        QStringLiteral("Act 1/Cues/Kick 01.wav"),
        QStringLiteral("Act 1/Cues/Kick 02.wav"),
        QStringLiteral("Act 2/Music/Overture.mp3"),
        QStringLiteral("Act 2/Music/Waltz (rehearsal mix).m4a"),
        QStringLiteral("Act 2/Voice/Narrator line 12.wav"),
        QStringLiteral("Act 2/Voice/corrupt take.wav"),
        QStringLiteral("Act 2/Voice/Narrator line 13.caf"),
        QStringLiteral("Act 2/Music/Finale.aif"),
    };
    for (const QString &file : files) {
        QDir().mkpath(QFileInfo(session + u'/' + file).path());
        QFile(session + u'/' + file).open(QIODevice::WriteOnly);
    }

    const QString bigSession = scratch.filePath(QStringLiteral("Season"));
    for (int reel = 1; reel <= 10; ++reel) {
        const QString folder =
            bigSession + QStringLiteral("/Reel %1").arg(reel, 2, 10, QLatin1Char('0'));
        QDir().mkpath(folder);
        for (int take = 1; take <= 30; ++take)
            QFile(folder + QStringLiteral("/take %1.wav").arg(take)).open(QIODevice::WriteOnly);
    }

    for (const AppLanguage language : {AppLanguage::En, AppLanguage::Ru}) {
        const QString tag = AppLanguages::rawValue(language);
        LanguageManager languages(
            std::make_unique<QSettings>(scratch.filePath(QStringLiteral("lang.ini")),
                                        QSettings::IniFormat),
            {QStringLiteral("en-US")});
        languages.setSelection(language);
        auto preferences = std::make_shared<QSettings>(
            scratch.filePath(QStringLiteral("prefs.ini")), QSettings::IniFormat);
        auto support = std::make_shared<SupportWindowPresenter>();
        TonbrookApp tonbrook(
            AppServices{.bookmarkStore = OutputFolderBookmarkStore(preferences),
                        .analysisService = std::make_shared<ScriptedAnalyzer>(standInMeasurement),
                        .processingService = std::make_shared<ScriptedProcessor>(standInResult),
                        .supportPresenter = support},
            languages);
        support->setEngine(&tonbrook.engine());
        QQuickWindow *window = tonbrook.window();
        if (!window)
            return 1;
        MainViewModel &vm = tonbrook.viewModel();
        window->resize(980, 720);
        const auto name = [&](const char *state) -> QString {
            return out + QStringLiteral("/%1-%2.png").arg(QLatin1StringView(state), tag);
        };

        shoot(window, name("01-idle-empty"));
        // Where keyboard focus shows: eight Tab presses in.
        for (int presses = 0; presses < 8; ++presses) {
            QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
            QCoreApplication::sendEvent(window, &tab);
        }
        shoot(window, name("01-idle-focus"));

        ProcessingSettings settings = vm.settings();
        settings.outputFolder = scratch.filePath(QStringLiteral("Delivered"));
        vm.setSettings(settings);
        vm.importPaths({session, scratch.filePath(QStringLiteral("notes.txt"))});
        settle(800);
        vm.toggleSelection(vm.queue().at(2).id);
        vm.toggleSelection(vm.queue().at(5).id);
        shoot(window, name("02-idle-queue"));

        window->resize(900, 720);
        shoot(window, name("03-idle-narrow"));
        window->resize(980, 720);

        settings = vm.settings();
        settings.selectedPreset = *LoudnessPreset::builtIn(u"custom");
        settings.customTargetLUFS = -18.5;
        settings.outputFormatMode = OutputFormatMode::Mp3;
        settings.addPrefix = true;
        settings.outputFolder = session + QStringLiteral("/Act 1/Cues/Delivered");
        vm.setSettings(settings);
        shoot(window, name("04-settings-custom-overlap"));

        QMetaObject::invokeMethod(find(window, "languageMenu"), "open");
        shoot(window, name("05-language-menu"));
        QMetaObject::invokeMethod(find(window, "languageMenu"), "close");

        settings = vm.settings();
        settings.selectedPreset = *LoudnessPreset::builtIn(u"podcast");
        settings.outputFormatMode = OutputFormatMode::KeepOriginal;
        settings.outputFolder = scratch.filePath(QStringLiteral("Delivered"));
        settings.revealInFinderWhenComplete = false;
        vm.setSettings(settings);
        vm.toggleSelectAll();
        vm.toggleSelectAll();
        holdProcessing = true;
        vm.process();
        settle(600);
        shoot(window, name("06-processing"));
        window->resize(900, 680);
        settle(200);
        shoot(window, name("06-processing-900"));
        holdProcessing = false;
        settle(800);
        shoot(window, name("07-completion-900"));
        window->resize(980, 720);
        settle(200);
        shoot(window, name("07-completion"));

        vm.startNewBatch();
        vm.importPaths({session});
        settle(400);
        holdProcessing = false;
        vm.process();
        settle(800);
        vm.startNewBatch();
        vm.importPaths({session});
        settle(500);
        vm.process();
        settle(600);
        // Back to the queue with every kind of outcome on show.
        vm.cancelProcessing();
        settle(300);
        shoot(window, name("08-idle-after-run"));

        QString failedId;
        for (const AudioFileItem &item : vm.queue())
            if (item.status.kind() == ProcessingStatus::Kind::Failed)
                failedId = item.id.toString(QUuid::WithoutBraces);
        QMetaObject::invokeMethod(window, "openDetails", Q_ARG(QVariant, failedId));
        settle(200);
        QObject *details = find(window, "itemDetailSheet");
        shoot(window, name("09-item-details"));
        if (details)
            details->setProperty("showDetails", true);
        shoot(window, name("10-item-details-open"));
        QMetaObject::invokeMethod(details, "close");

        for (const AudioFileItem &item : vm.queue())
            if (item.result && !item.result->changes.isEmpty())
                QMetaObject::invokeMethod(window, "openDetails",
                                          Q_ARG(QVariant, item.id.toString(QUuid::WithoutBraces)));
        settle(200);
        shoot(window, name("15-item-details-changes"));
        QMetaObject::invokeMethod(find(window, "itemDetailSheet"), "close");

        QObject *about = find(window, "aboutSheet");
        QMetaObject::invokeMethod(about, "open");
        shoot(window, name("11-about"));
        QMetaObject::invokeMethod(about, "close");

        QObject *licenses = find(window, "licensesSheet");
        QMetaObject::invokeMethod(licenses, "open");
        shoot(window, name("12-licenses"));
        licenses->setProperty("expandedIndex", 0);
        shoot(window, name("13-licenses-open"));
        QMetaObject::invokeMethod(licenses, "close");

        vm.showSupport();
        settle(400);
        if (QQuickWindow *supportWindow = support->window()) {
            supportWindow->grabWindow().save(name("14-support-window"));
            qInfo("%s", qPrintable(name("14-support-window")));
            supportWindow->close();
        }
        settle(200);

        // A real session: 300 files in 10 folders, at the smallest, the default
        // and a full-HD window; how many rows each shows goes to the log.
        vm.startNewBatch();
        holdMeasuring = true;
        vm.importPaths({bigSession});
        window->resize(900, 680);
        settle(300);
        shoot(window, name("16-session-measuring-900x680"));
        holdMeasuring = false;
        while (vm.isAnalyzing())
            settle(100);
        settle(300);
        for (const QSize size : {QSize(900, 680), QSize(980, 720), QSize(1920, 1080)}) {
            window->resize(size);
            settle(400);
            const QString shot = name(qPrintable(
                QStringLiteral("16-session-%1x%2").arg(size.width()).arg(size.height())));
            shoot(window, shot);
            if (const auto *list = qobject_cast<QQuickItem *>(find(window, "queueList")))
                qInfo("rows visible at %dx%d (%s): %.1f", size.width(), size.height(),
                      qPrintable(tag), list->height() / 30.0);
        }
        window->resize(980, 720);
    }
    return 0;
}

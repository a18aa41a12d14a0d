// SPDX-License-Identifier: GPL-3.0-or-later
//
// The real window over stand-in services: what it shows on each screen, and
// what drops, shortcuts, menus and sheets do.
#include "../app/ControllerFixture.h"
#include "../localization/LanguageFixture.h"
#include "ui/AppContext.h"
#include "ui/TonbrookApp.h"

#include <QAccessible>
#include <QDirIterator>
#include <QMimeData>
#include <QQmlComponent>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

Q_IMPORT_QML_PLUGIN(Tonbrook_AppPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_LocalizationPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_StylePlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_UiPlugin)

namespace {

class CountingPanels final : public FilePanelPresenting
{
public:
    int fileRequests = 0;
    int folderRequests = 0;
    QStringList presentFilePanel(const QStringList &) override
    {
        ++fileRequests;
        return {};
    }
    QStringList presentFolderPanel() override
    {
        ++folderRequests;
        return {};
    }
    std::optional<QString> presentDestinationFolderPanel() override { return std::nullopt; }
    std::optional<QString> presentSavePanel(const QString &, const QString &) override
    {
        return std::nullopt;
    }
};

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;
    std::shared_ptr<GatedAnalyzer> m_analyzer;
    std::shared_ptr<GatedProcessor> m_processor;
    std::shared_ptr<CountingPanels> m_panels;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<TonbrookApp> m_app;

    MainViewModel &vm() { return m_app->viewModel(); }
    QQuickWindow *window() { return m_app->window(); }

    // Items anywhere on screen (popups and list delegates included), or other objects by name.
    template<typename T = QQuickItem>
    T *item(const char *name)
    {
        if (T *found = window()->findChild<T *>(QLatin1StringView(name)))
            return found;
        return qobject_cast<T *>(visualChild(window()->contentItem(), QLatin1StringView(name)));
    }

    static QQuickItem *visualChild(QQuickItem *root, QLatin1StringView name)
    {
        if (!root)
            return nullptr;
        if (root->objectName() == name)
            return root;
        const QList<QQuickItem *> children = root->childItems();
        for (QQuickItem *child : children)
            if (QQuickItem *found = visualChild(child, name))
                return found;
        return nullptr;
    }

    QStringList files(const QStringList &names)
    {
        QStringList paths;
        for (const QString &name : names) {
            const QString path = m_dir->filePath(name);
            QDir().mkpath(QFileInfo(path).path());
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            paths.append(path);
        }
        return paths;
    }

    void measureAll()
    {
        for (const AudioFileItem &entry : vm().queue())
            m_analyzer->gate.release(fileNameOf(entry.sourcePath), ControllerFixture::measured());
        QTRY_VERIFY(!vm().isAnalyzing());
    }

    void setOutputFolder()
    {
        ProcessingSettings settings = vm().settings();
        settings.outputFolder = m_dir->filePath(QStringLiteral("out"));
        vm().setSettings(settings);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window(), key, modifiers);
        QCoreApplication::processEvents();
    }

    void click(QQuickItem *target)
    {
        QVERIFY(target);
        const QPointF centre =
            target->mapToScene(QPointF(target->width() / 2, target->height() / 2));
        QTest::mouseClick(window(), Qt::LeftButton, {}, centre.toPoint());
    }

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle(QStringLiteral("Basic")); }

    void init()
    {
        m_language.manager().setSelection(AppLanguage::En);
        m_dir = std::make_unique<QTemporaryDir>();
        m_analyzer = std::make_shared<GatedAnalyzer>();
        m_processor = std::make_shared<GatedProcessor>();
        m_panels = std::make_shared<CountingPanels>();
        launch();
    }

    // The window on the stand-ins, with the preferences file of this test.
    void launch()
    {
        auto preferences = std::make_shared<QSettings>(m_dir->filePath(QStringLiteral("p.ini")),
                                                       QSettings::IniFormat);
        m_app = std::make_unique<TonbrookApp>(
            AppServices{.panelPresenter = m_panels,
                        .bookmarkStore = OutputFolderBookmarkStore(preferences),
                        .settingsStore = SettingsStore(preferences),
                        .analysisService = m_analyzer,
                        .processingService = m_processor},
            m_language.manager(), QStringList(),
            ResourceLocator(QStringLiteral(TONBROOK_BUILD_BIN_DIR)));
        QVERIFY(window());
        window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowExposed(window()));
        QVERIFY(QTest::qWaitForWindowActive(window()));
    }

    void cleanup()
    {
        vm().cancelProcessing();
        m_app.reset();
    }

    void everyQmlFileLoads()
    {
        QDirIterator it(QStringLiteral(":/Tonbrook"), {QStringLiteral("*.qml")}, QDir::Files,
                        QDirIterator::Subdirectories);
        int count = 0;
        while (it.hasNext()) {
            const QString path = it.next();
            QQmlComponent component(&m_app->engine(), QUrl(QStringLiteral("qrc") + path));
            QVERIFY2(component.isReady(), qPrintable(path + u' ' + component.errorString()));
            ++count;
        }
        QVERIFY(count >= 30);
    }

    void processButtonOnEachScreen()
    {
        auto *button = item("processButton");
        QVERIFY(button->isVisible());
        QVERIFY(!button->isEnabled()); // empty queue
        vm().importPaths(files({QStringLiteral("a.wav"), QStringLiteral("b.wav")}));
        QVERIFY(!button->isEnabled()); // no output folder
        QCOMPARE(item("footerTrailing")->property("text").toString(),
                 QStringLiteral("No output folder selected"));
        setOutputFolder();
        QVERIFY(button->isEnabled());
        QCOMPARE(button->property("text").toString(), QStringLiteral("Process 2 Files"));
        measureAll();

        click(button);
        QCOMPARE(vm().screenState(), AppScreenState::Processing);
        QTRY_VERIFY(!button->isVisible());
        QTRY_VERIFY(item("processingScreen")->isVisible());
        m_processor->gate.release(QStringLiteral("a.wav"), GatedProcessor::writes());
        m_processor->gate.release(QStringLiteral("b.wav"),
                                  GatedProcessor::fails(ProcessingError::writeFailed(
                                      QStringLiteral("Permission denied"))));
        QTRY_COMPARE(vm().screenState(), AppScreenState::Completed);
        QTRY_VERIFY(item("completionScreen")->isVisible());
        QVERIFY(!button->isVisible());
        QCOMPARE(item("filesProcessed")->property("text").toString(),
                 QStringLiteral("2 files processed"));
        QCOMPARE(item("reachedLine")->property("text").toString(),
                 QStringLiteral("1 reached target loudness"));
        QVERIFY(!item("peakLimitedLine")->isVisible());
        QCOMPARE(item("failedLine")->property("text").toString(), QStringLiteral("1 failed"));
        QVERIFY(item("revealButton")->isEnabled());

        click(item("newFilesButton"));
        QTRY_COMPARE(vm().screenState(), AppScreenState::Idle);
        QTRY_VERIFY(button->isVisible());
        QVERIFY(vm().queue().isEmpty());
    }

    void droppedFilesAreImported()
    {
        const QStringList paths =
            files({QStringLiteral("drop/one.wav"), QStringLiteral("drop/two.aiff")});
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(paths[0]),
                      QUrl::fromLocalFile(m_dir->filePath(QStringLiteral("drop")))});
        const QPoint at(window()->width() / 2, window()->height() / 2);
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &enter);
        QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &move);
        QTRY_VERIFY(item("dropArea")->property("containsDrag").toBool());
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &drop);
        QTRY_COMPARE(vm().queue().size(), 2);
        QTRY_COMPARE(vm().importNotice(),
                     std::optional(QStringLiteral("2 added \u00b7 1 already in queue")));
    }

    void shortcutsAct()
    {
        press(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(m_panels->fileRequests, 1);
        press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(m_panels->folderRequests, 1);

        vm().importPaths(
            files({QStringLiteral("a.wav"), QStringLiteral("b.wav"), QStringLiteral("c.wav")}));
        measureAll();
        press(Qt::Key_A, Qt::ControlModifier);
        QVERIFY(vm().allSelected());
        vm().toggleSelection(vm().queue().at(0).id);
        press(Qt::Key_Delete);
        QCOMPARE(vm().queue().size(), 1);

        press(Qt::Key_Return, Qt::ControlModifier); // no output folder yet: nothing
        QCOMPARE(vm().screenState(), AppScreenState::Idle);
        setOutputFolder();
        press(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(vm().screenState(), AppScreenState::Processing);
        press(Qt::Key_Escape);
        QCOMPARE(vm().screenState(), AppScreenState::Idle);

        // Ctrl+Q leaves the event loop; exit code 7 would mean it never did.
        QTimer::singleShot(0, this, [this] { press(Qt::Key_Q, Qt::ControlModifier); });
        QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(7); });
        QCOMPARE(QCoreApplication::exec(), 0);
    }

    void languageChangesEveryTextAtOnce()
    {
        vm().importPaths(files({QStringLiteral("a.wav")}));
        measureAll();
        QCOMPARE(item("subtitle")->property("text").toString(),
                 QStringLiteral("Batch loudness normalization and audio conversion"));
        m_language.manager().setSelection(AppLanguage::Ru);
        QTRY_COMPARE(item("subtitle")->property("text").toString(),
                     QStringLiteral("Пакетная нормализация громкости и конвертация аудио"));
        QCOMPARE(item("footerLeading")->property("text").toString(), QStringLiteral("1 файл"));
        QCOMPARE(item("footerTrailing")->property("text").toString(),
                 QStringLiteral("Папка вывода не выбрана"));
        QCOMPARE(item("statusText")->property("text").toString(), QStringLiteral("1 файл готов"));
        QCOMPARE(item("processButton")->property("text").toString(),
                 QStringLiteral("Обработать 1 файл"));
        QCOMPARE(item("loadedSummary")->property("text").toString(),
                 QStringLiteral("1 файл загружен  \u00b7  Отдельные файлы"));
        QCOMPARE(vm().queueModel()
                     ->data(vm().queueModel()->index(0), QueueModel::StatusTextRole)
                     .toString(),
                 QStringLiteral("Готов"));
        QCOMPARE(item("importNotice")->property("text").toString(),
                 QStringLiteral("1 файл добавлен"));
    }

    void anImportThatAddsNothingSaysSoOnAnEmptyQueue()
    {
        vm().importPaths(files({QStringLiteral("Reel/a.flac"), QStringLiteral("Reel/b.flac")}));
        QVERIFY(vm().queue().isEmpty());
        QQuickItem *notice = item("emptyImportNotice");
        QVERIFY(notice);
        QTRY_VERIFY(notice->isVisible());
        QCOMPARE(notice->property("text").toString(),
                 QStringLiteral("2 files skipped: unsupported format (flac)"));
    }

    void aLongRunIsNotStoppedWithoutAsking()
    {
        vm().importPaths(files({QStringLiteral("a.wav"), QStringLiteral("b.wav")}));
        measureAll();
        setOutputFolder();
        vm().process();
        QCOMPARE(vm().screenState(), AppScreenState::Processing);
        QVERIFY(window()->title().startsWith(u"Processing 0 of 2"));
        // "A few seconds" is the controller's own bound: wait past it.
        QTest::qWait(MainViewModel::confirmAfterMilliseconds + 200);
        QVERIFY(vm().stoppingNeedsConfirmation());

        press(Qt::Key_Escape);
        auto *sheet = item<QObject>("stopRunSheet");
        QVERIFY(sheet);
        QTRY_VERIFY(sheet->property("opened").toBool());
        QCOMPARE(vm().screenState(), AppScreenState::Processing);
        click(item("keepGoing"));
        QTRY_VERIFY(!sheet->property("opened").toBool());
        QCOMPARE(vm().screenState(), AppScreenState::Processing);

        // Closing the window asks too; Stop ends the run.
        window()->close();
        QTRY_VERIFY(sheet->property("opened").toBool());
        QVERIFY(window()->isVisible());
        QCOMPARE(sheet->property("quitAfter").toBool(), true);
        sheet->setProperty("quitAfter", false); // the test's event loop stays
        click(item("stopRunConfirm"));
        QTRY_COMPARE(vm().screenState(), AppScreenState::Idle);
    }

    void theQueueOpensDetailsFromTheKeyboard()
    {
        vm().importPaths(files({QStringLiteral("a.wav"), QStringLiteral("b.wav")}));
        measureAll();
        QQuickItem *list = item("queueList");
        QVERIFY(list);
        for (int presses = 0; presses < 40 && !list->hasActiveFocus(); ++presses)
            press(Qt::Key_Tab);
        QVERIFY2(list->hasActiveFocus(), "Tab never reached the queue");
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        auto *sheet = item<QObject>("itemDetailSheet");
        QTRY_VERIFY(sheet->property("opened").toBool());
        QCOMPARE(sheet->property("fileName").toString(), QStringLiteral("b.wav"));
    }

    // The queue as a keyboard list: Space and Shift tick, Home/End move, Delete
    // removes the current file (not the ticked ones) and the next takes its row.
    void theQueueIsAKeyboardList()
    {
        vm().importPaths(
            files({QStringLiteral("a.wav"), QStringLiteral("b.wav"), QStringLiteral("c.wav"),
                   QStringLiteral("d.wav"), QStringLiteral("e.wav"), QStringLiteral("f.wav")}));
        measureAll();
        QQuickItem *list = item("queueList");
        for (int presses = 0; presses < 40 && !list->hasActiveFocus(); ++presses)
            press(Qt::Key_Tab);
        QVERIFY2(list->hasActiveFocus(), "Tab never reached the queue");
        const auto current = [list] {
            const auto *row = list->property("currentItem").value<QQuickItem *>();
            return row ? row->property("fileName").toString() : QString();
        };
        const auto ticked = [this] {
            QStringList names;
            for (const AudioFileItem &entry : vm().queue())
                if (vm().selectedIDs().contains(entry.id))
                    names.append(fileNameOf(entry.sourcePath));
            return names.join(u' ');
        };

        press(Qt::Key_Down);
        press(Qt::Key_Space);
        QCOMPARE(ticked(), QStringLiteral("b.wav"));
        press(Qt::Key_Down, Qt::ShiftModifier);
        press(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(ticked(), QStringLiteral("b.wav c.wav d.wav"));
        QCOMPARE(current(), QStringLiteral("d.wav"));

        press(Qt::Key_End);
        QCOMPARE(current(), QStringLiteral("f.wav"));
        press(Qt::Key_Delete); // the last row: the one before takes its place
        QCOMPARE(vm().fileCount(), 5);
        QTRY_COMPARE(current(), QStringLiteral("e.wav"));
        press(Qt::Key_Up);
        press(Qt::Key_Delete);
        QCOMPARE(vm().fileCount(), 4);
        QTRY_COMPARE(current(), QStringLiteral("e.wav"));
        QCOMPARE(list->property("currentIndex").toInt(), 3);
        QCOMPARE(ticked(), QStringLiteral("b.wav c.wav"));
        press(Qt::Key_Home);
        QCOMPARE(current(), QStringLiteral("a.wav"));

        // Shift+click: from the anchor (b, ticked with Space) to the row clicked.
        QQuickItem *rowE = nullptr;
        for (QQuickItem *row : list->property("contentItem").value<QQuickItem *>()->childItems())
            if (row->property("fileName").toString() == u"e.wav" && row->isVisible())
                rowE = row;
        QVERIFY(rowE);
        const QPointF at = rowE->mapToScene(QPointF(rowE->width() / 2, rowE->height() / 2));
        QTest::mouseClick(window(), Qt::LeftButton, Qt::ShiftModifier, at.toPoint());
        QCOMPARE(ticked(), QStringLiteral("b.wav c.wav e.wav"));
        QCOMPARE(current(), QStringLiteral("e.wav"));

        // Once processing, the list is gone and its keys with it.
        setOutputFolder();
        press(Qt::Key_Return, Qt::ControlModifier);
        QTRY_VERIFY(!list->isVisible());
        press(Qt::Key_Delete);
        press(Qt::Key_Space);
        QCOMPARE(vm().fileCount(), 4);
        QCOMPARE(ticked(), QStringLiteral("b.wav c.wav e.wav"));
    }

    // After a run, as a user goes on: retry the failure, back to the queue,
    // add more files, and they are measured.
    void afterARunTheButtonsLeadOn()
    {
        vm().importPaths(files({QStringLiteral("ok.wav"), QStringLiteral("bad.wav")}));
        measureAll();
        setOutputFolder();
        vm().process();
        m_processor->gate.release(QStringLiteral("ok.wav"), GatedProcessor::writes());
        m_processor->gate.release(
            QStringLiteral("bad.wav"),
            GatedProcessor::fails(ProcessingError::ffmpegFailed(1, QStringLiteral("bad"))));
        QTRY_COMPARE(vm().screenState(), AppScreenState::Completed);
        QTRY_VERIFY(item("failureList")->isVisible());

        click(item("retryFailedButton"));
        QTRY_COMPARE(m_processor->gate.running(), QStringList{QStringLiteral("bad.wav")});
        m_processor->gate.release(QStringLiteral("bad.wav"), GatedProcessor::writes());
        QTRY_COMPARE(vm().screenState(), AppScreenState::Completed);
        QTRY_VERIFY(item("backToQueueButton")->isVisible());

        click(item("backToQueueButton"));
        QTRY_COMPARE(vm().screenState(), AppScreenState::Idle);
        QCOMPARE(vm().queue().size(), 2);
        vm().importPaths(files({QStringLiteral("late.wav")}));
        QTRY_COMPARE(m_analyzer->gate.running(), QStringList{QStringLiteral("late.wav")});
        measureAll();
        QCOMPARE(vm().queue().last().status.kind(), ProcessingStatus::Kind::Ready);
    }

    void theNextLaunchStartsWhereTheUserLeft()
    {
        // Chosen through what the panels call.
        AppContext *context = AppContext::create(nullptr, &m_app->engine());
        QVERIFY(context);
        context->settings()->setPresetIndex(4); // podcast
        context->settings()->setFormatIndex(3);
        context->settings()->setBitDepthIndex(2);
        context->settings()->setTruePeakCeiling(-2.0);
        window()->resize(1300, 860);
        QTRY_COMPARE(window()->size(), QSize(1300, 860));
        const ProcessingSettings chosen = vm().settings();

        m_app.reset();
        launch();
        QCOMPARE(vm().settings(), chosen);
        QCOMPARE(vm().settings().selectedPreset.id, QStringLiteral("podcast"));
        QCOMPARE(window()->size(), QSize(1300, 860));
    }

    void languageMenuSetsTheChoice()
    {
        auto *menu = item<QObject>("languageMenu");
        QMetaObject::invokeMethod(menu, "open");
        QTRY_VERIFY(menu->property("opened").toBool());
        QQuickItem *russian = nullptr;
        QMetaObject::invokeMethod(menu, "itemAt", Q_RETURN_ARG(QQuickItem *, russian),
                                  Q_ARG(int, 2));
        QVERIFY(russian);
        QCOMPARE(russian->property("text").toString(), QStringLiteral("Русский"));
        QMetaObject::invokeMethod(russian, "triggered");
        QCOMPARE(m_language.manager().selection(), AppLanguage::Ru);
        QTRY_VERIFY(russian->property("current").toBool());
    }

    void sheetsOpenAndClose()
    {
        auto *about = item<QObject>("aboutSheet");
        click(item("aboutButton"));
        QTRY_VERIFY(about->property("opened").toBool());
        QVERIFY(item("aboutVersion")
                    ->property("text")
                    .toString()
                    .startsWith(QStringLiteral("Version ")));
        press(Qt::Key_Escape);
        QTRY_VERIFY(!about->property("visible").toBool());

        auto *licenses = item<QObject>("licensesSheet");
        click(item("licensesButton"));
        QTRY_VERIFY(licenses->property("opened").toBool());
        QTRY_VERIFY(item("licenseToggle_0"));
        QVERIFY(item("licenseToggle_0")->isVisible()); // FFmpeg's text ships in the build tree
        click(item("licenseToggle_0"));
        QCOMPARE(licenses->property("expandedIndex").toInt(), 0);
        click(item("licensesDone"));
        QTRY_VERIFY(!licenses->property("visible").toBool());

        vm().importPaths(files({QStringLiteral("a.wav")}));
        auto *details = item<QObject>("itemDetailSheet");
        QMetaObject::invokeMethod(
            window(), "openDetails",
            Q_ARG(QVariant, vm().queue().at(0).id.toString(QUuid::WithoutBraces)));
        QTRY_VERIFY(details->property("opened").toBool());
        QCOMPARE(details->property("fileName").toString(), QStringLiteral("a.wav"));
        click(item("detailDone"));
        QTRY_VERIFY(!details->property("visible").toBool());
    }

    void settingsPanelsWriteTheSettings()
    {
        QMetaObject::invokeMethod(item<QObject>("formatPicker"), "activated", Q_ARG(int, 3));
        QCOMPARE(vm().settings().outputFormatMode, OutputFormatMode::Mp3);
        QVERIFY(!item("bitDepthPicker")->isEnabled());

        QMetaObject::invokeMethod(item<QObject>("presetPicker"), "activated", Q_ARG(int, 6));
        QVERIFY(vm().settings().selectedPreset.isCustom);
        auto *custom = item("customTargetField");
        QTRY_VERIFY(custom->isVisible());
        custom->setProperty("text", QStringLiteral("-18,25"));
        QMetaObject::invokeMethod(custom, "textEdited");
        QCOMPARE(vm().settings().customTargetLUFS, -18.25); // taken as typed, within -70..-5
        custom->setProperty("text", QStringLiteral("-3"));
        QMetaObject::invokeMethod(custom, "textEdited");
        QCOMPARE(vm().settings().customTargetLUFS, -18.25);
        QVERIFY(custom->property("invalid").toBool());

        QCOMPARE(item("ceilingField")->property("realFrom").toDouble(), -9.0);
        QCOMPARE(item("ceilingField")->property("realTo").toDouble(), 0.0);
        QMetaObject::invokeMethod(item<QObject>("ceilingField"), "realValueEdited",
                                  Q_ARG(double, -2.34));
        QCOMPARE(vm().settings().truePeakCeiling, -2.3);

        QMetaObject::invokeMethod(item<QObject>("prefixSwitch"), "toggled");
        item("prefixSwitch")->setProperty("checked", true);
        QMetaObject::invokeMethod(item<QObject>("prefixSwitch"), "toggled");
        QVERIFY(vm().settings().addPrefix);
    }

    void everyControlHasAnAccessibleName()
    {
        vm().importPaths(files({QStringLiteral("a.wav")}));
        measureAll();
        window()->resize(980, 720);
        // The settings panels too, which a loaded queue folds into one line.
        window()->setProperty("settingsOpen", true);
        QStringList unnamed;
        int controls = 0;
        const auto check = [&](auto &self, QQuickItem *node) -> void {
            const bool isControl =
                node->inherits("QQuickAbstractButton") || node->inherits("QQuickComboBox") ||
                node->inherits("QQuickSpinBox") || node->inherits("QQuickTextField");
            if (isControl && node->isVisible()) {
                ++controls;
                QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(node);
                if (!accessible || accessible->text(QAccessible::Name).isEmpty())
                    unnamed.append(node->objectName().isEmpty()
                                       ? QString::fromLatin1(node->metaObject()->className())
                                       : node->objectName());
            }
            const QList<QQuickItem *> children = node->childItems();
            for (QQuickItem *child : children)
                self(self, child);
        };
        check(check, window()->contentItem());
        QVERIFY2(controls >= 20, qPrintable(QString::number(controls)));
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(u", ")));
    }

    // Tab walks the idle screen from top to bottom, and wherever focus lands it shows:
    // a focus ring on a control, the outlined current row in the queue.
    void everyTabStopShowsWhereFocusIs()
    {
        vm().importPaths(files({QStringLiteral("a.wav"), QStringLiteral("b.wav")}));
        measureAll();
        setOutputFolder();
        window()->setProperty("settingsOpen", true);
        QQuickItem *list = item("queueList");
        QQuickItem *column = item("idleColumn");
        QQuickItem *panels = item("settingsPanels");
        QTRY_VERIFY(panels->y() + panels->height() <= item("queueTable")->y());
        QList<QQuickItem *> stops;
        qreal band = -1;
        bool listReached = false;
        for (int presses = 0; presses < 60; ++presses) {
            press(Qt::Key_Tab);
            QQuickItem *stop = window()->activeFocusItem();
            QVERIFY(stop);
            if (!stops.isEmpty() && stop == stops.first())
                break;
            stops.append(stop);
            const QByteArray name =
                stop->objectName().toUtf8() + ' ' + stop->metaObject()->className();
            // Bands of the screen (toolbar, drop bar, settings, panels, queue) in order.
            QQuickItem *inColumn = stop;
            while (inColumn && inColumn->parentItem() != column)
                inColumn = inColumn->parentItem();
            const qreal y = inColumn ? inColumn->y() : -1;
            QVERIFY2(y >= band, name.constData());
            band = y;
            if (list->isAncestorOf(stop)) {
                listReached = true;
                QVERIFY(list->property("currentItem")
                            .value<QQuickItem *>()
                            ->property("isCurrent")
                            .toBool());
                continue;
            }
            QVERIFY2(showsFocus(stop), name.constData());
        }
        QVERIFY2(stops.size() >= 15 && stops.size() < 60, "Tab does not go round the screen");
        QVERIFY(listReached);
    }

    static bool showsFocus(QQuickItem *stop)
    {
        // The ring belongs to the control; focus may sit on an item inside it.
        for (QQuickItem *control = stop; control; control = control->parentItem()) {
            if (QQuickItem *ring = visualChild(control, QLatin1StringView("focusRing")))
                return ring->isVisible();
        }
        return false;
    }

    void textsAreReadableAndNumbersWhole_data()
    {
        QTest::addColumn<AppLanguage>("language");
        QTest::newRow("en") << AppLanguage::En;
        QTest::newRow("ru") << AppLanguage::Ru;
    }

    // In the narrowest window, on each screen: nothing a user reads is under 11 px,
    // and no text that carries a number is cut off.
    void textsAreReadableAndNumbersWhole()
    {
        QFETCH(AppLanguage, language);
        m_language.manager().setSelection(language);
        window()->resize(900, 680);
        window()->setProperty("settingsOpen", true);
        ProcessingSettings settings = vm().settings();
        settings.selectedPreset = *LoudnessPreset::builtIn(u"music_playback");
        vm().setSettings(settings);
        QStringList names;
        for (int take = 1; take <= 22; ++take)
            names.append(QStringLiteral("take %1.wav").arg(take));
        vm().importPaths(files(names));
        for (const QString &name : names.first(3))
            m_analyzer->gate.release(name, ControllerFixture::measured());
        QTRY_COMPARE(vm().analysisDone(), 3);
        checkTexts("measuring");

        measureAll();
        setOutputFolder();
        vm().process();
        for (const QString &name : names.first(2))
            m_processor->gate.release(name, GatedProcessor::writes());
        QTRY_COMPARE(vm().processedCount(), 2);
        checkTexts("processing");

        m_processor->gate.release(names.last(), GatedProcessor::fails(ProcessingError::ffmpegFailed(
                                                    1, QStringLiteral("bad"))));
        for (const QString &name : names.sliced(2, names.size() - 3))
            m_processor->gate.release(name, GatedProcessor::writes());
        QTRY_COMPARE(vm().screenState(), AppScreenState::Completed);
        checkTexts("completed");
    }

    void checkTexts(const char *screen)
    {
        QTest::qWait(50); // layouts settle
        int numbers = 0;
        const QList<QQuickItem *> texts = visibleTexts(window()->contentItem());
        for (QQuickItem *text : texts) {
            const QString content = text->property("text").toString();
            const QFont font = text->property("font").value<QFont>();
            const qreal pixels =
                font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 96.0 / 72.0;
            const QByteArray where = screen + QByteArray(": ") + content.toUtf8();
            QVERIFY2(pixels >= 11, where.constData());
            // File names and paths give way in the middle; counts and values never do.
            static const QRegularExpression digit(QStringLiteral("\\d"));
            if (!content.contains(digit) || text->property("elide").toInt() == Qt::ElideMiddle)
                continue;
            const QByteArray fit = where + ' ' +
                                   QByteArray::number(text->property("contentWidth").toReal()) +
                                   " in " + QByteArray::number(text->width());
            QVERIFY2(!text->property("truncated").toBool(), fit.constData());
            QVERIFY2(text->property("contentWidth").toReal() <= text->width() + 1,
                     where.constData());
            ++numbers;
        }
        QVERIFY(numbers >= 2);
    }

    static QList<QQuickItem *> visibleTexts(QQuickItem *root)
    {
        QList<QQuickItem *> found;
        if (!root || !root->isVisible() || root->opacity() == 0)
            return found;
        if (root->inherits("QQuickText") || root->inherits("QQuickTextInput")) {
            if (!root->property("text").toString().isEmpty())
                found.append(root);
        }
        const QList<QQuickItem *> children = root->childItems();
        for (QQuickItem *child : children)
            found.append(visibleTexts(child));
        return found;
    }

    void panelsSitSideBySideOnlyWhereTheyFit()
    {
        // Side by side down to the smallest window: stacked, they would leave
        // the queue no room.
        window()->resize(980, 720);
        QTRY_COMPARE(item("settingsPanels")->property("columns").toInt(), 3);
        window()->resize(900, 680);
        QTRY_COMPARE(item("settingsPanels")->property("columns").toInt(), 3);
        window()->resize(600, 400);
        QCOMPARE(window()->width() >= 900 || window()->minimumWidth() == 900, true);
        QCOMPARE(window()->minimumHeight(), 680);
    }
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// The real window over the controller's stand-in services: what it shows on
// each screen, and what drops, keys, menus, sheets and dialogs do.
#include "../app/ControllerFixture.h"
#include "../localization/LanguageFixture.h"
#include "ui/FilePanelPresenter.h"
#include "ui/TonbrookApp.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QFileDialog>
#include <QMimeData>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

Q_IMPORT_QML_PLUGIN(Tonbrook_AppPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_LocalizationPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_StylePlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_UiPlugin)

class MainWindowTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;
    std::unique_ptr<ControllerFixture> m_f;
    std::unique_ptr<TonbrookApp> m_app;

    ControllerFixture &f() { return *m_f; }
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

    static QList<QQuickItem *> tree(QQuickItem *root)
    {
        QList<QQuickItem *> items{root};
        for (QQuickItem *child : root->childItems())
            items.append(tree(child));
        return items;
    }

    static QQuickItem *visualChild(QQuickItem *root, QLatin1StringView name)
    {
        for (QQuickItem *node : tree(root))
            if (node->objectName() == name)
                return node;
        return nullptr;
    }

    QString textOf(const char *name) { return item<QObject>(name)->property("text").toString(); }
    bool isOpen(const char *sheet) { return item<QObject>(sheet)->property("opened").toBool(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window(), key, modifiers);
        QCoreApplication::processEvents();
    }

    void click(QQuickItem *target, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QVERIFY(target);
        const QPointF centre = target->mapToScene({target->width() / 2, target->height() / 2});
        QTest::mouseClick(window(), Qt::LeftButton, modifiers, centre.toPoint());
    }

    void launch()
    {
        m_app =
            std::make_unique<TonbrookApp>(f().services(), m_language.manager(), QStringList(),
                                          ResourceLocator(QStringLiteral(TONBROOK_BUILD_BIN_DIR)));
        f().model = &m_app->viewModel();
        QVERIFY(window());
        window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window()));
    }

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle(QStringLiteral("Basic")); }

    void init()
    {
        m_language.manager().setSelection(AppLanguage::En);
        m_f = std::make_unique<ControllerFixture>(0);
        launch();
    }

    void cleanup()
    {
        vm().cancelProcessing();
        m_app.reset();
    }

    // Drop, measure, process, complete; retry the failure, back to the queue,
    // process again, and a new batch.
    void aBatchFromDropToNewFiles()
    {
        const QStringList paths = f().files({u"drop/one.wav"_qs, u"drop/two.aiff"_qs});
        QMimeData data;
        data.setUrls(
            {QUrl::fromLocalFile(paths[0]), QUrl::fromLocalFile(QFileInfo(paths[0]).path())});
        const QPoint at(window()->width() / 2, window()->height() / 2);
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &enter);
        QTRY_VERIFY(item("dropArea")->property("containsDrag").toBool());
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &drop);
        QTRY_COMPARE(vm().importNotice(), std::optional(u"2 added \u00b7 1 already in queue"_qs));
        QCOMPARE(textOf("loadedSummary"), u"2 files loaded  \u00b7  Individual files"_qs);

        auto *button = item("processButton");
        QVERIFY(!button->isEnabled()); // no output folder
        QCOMPARE(textOf("footerTrailing"), u"No output folder selected"_qs);
        f().setOutputFolder();
        QVERIFY(button->isEnabled());
        QCOMPARE(button->property("text").toString(), u"Process 2 Files"_qs);
        QVERIFY(f().measureAll());
        click(button);
        QTRY_VERIFY(item("processingScreen")->isVisible());
        QVERIFY(!button->isVisible());
        f().processor->release({u"one.wav"_qs}, GatedProcessor::writes());
        f().processor->release({u"two.aiff"_qs}, GatedProcessor::fails(ProcessingError::writeFailed(
                                                     u"Permission denied"_qs)));
        QTRY_VERIFY(item("completionScreen")->isVisible());
        QCOMPARE(textOf("filesProcessed"), u"2 files processed"_qs);
        QCOMPARE(textOf("reachedLine"), u"1 reached target loudness"_qs);
        QVERIFY(!item("peakLimitedLine")->isVisible());
        QCOMPARE(textOf("failedLine"), u"1 failed"_qs);
        QTRY_VERIFY(item("failureList")->isVisible());
        QVERIFY(item("revealButton")->isEnabled());

        click(item("retryFailedButton"));
        QTRY_COMPARE(f().processor->running(), QStringList{u"two.aiff"_qs});
        f().processor->release({u"two.aiff"_qs}, GatedProcessor::writes());
        QTRY_COMPARE(vm().screenState(), AppScreenState::Completed);
        QTRY_VERIFY(item("backToQueueButton")->isVisible());
        click(item("backToQueueButton"));
        QTRY_VERIFY(button->isVisible());
        QCOMPARE(f().statuses(), u"dd"_qs);
        click(button);
        f().processor->release({u"one.wav"_qs, u"two.aiff"_qs}, GatedProcessor::writes());
        QTRY_COMPARE(vm().screenState(), AppScreenState::Completed);
        click(item("newFilesButton"));
        QTRY_VERIFY(button->isVisible());
        QVERIFY(vm().queue().isEmpty());
    }

    // Shortcuts act on the window; the queue, once Tab reaches it, is a keyboard list
    // where Delete removes the current file (not the ticked ones).
    void theKeyboardDrivesTheWindow()
    {
        press(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(f().panels->fileRequests, 1);
        press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f().panels->folderRequests, 1);
        QVERIFY(f().importMeasured({u"a.wav"_qs, u"z.wav"_qs}));
        press(Qt::Key_A, Qt::ControlModifier);
        QVERIFY(vm().allSelected());
        vm().toggleSelection(vm().queue().at(0).id);
        QVERIFY(item("removeSelectedButton")->isEnabled());
        press(Qt::Key_Delete);
        QCOMPARE(vm().fileCount(), 1);
        QVERIFY(!item("removeSelectedButton")->isEnabled());
        press(Qt::Key_Return, Qt::ControlModifier); // no output folder yet: nothing
        QCOMPARE(vm().screenState(), AppScreenState::Idle);

        QVERIFY(
            f().importMeasured({u"b.wav"_qs, u"c.wav"_qs, u"d.wav"_qs, u"e.wav"_qs, u"f.wav"_qs}));
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
        QCOMPARE(ticked(), u"b.wav"_qs);
        press(Qt::Key_Down, Qt::ShiftModifier);
        press(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(ticked(), u"b.wav c.wav d.wav"_qs);
        QCOMPARE(current(), u"d.wav"_qs);
        press(Qt::Key_End);
        QCOMPARE(current(), u"f.wav"_qs);
        press(Qt::Key_Delete); // the last row: the one before takes its place
        QCOMPARE(vm().fileCount(), 5);
        QTRY_COMPARE(current(), u"e.wav"_qs);
        press(Qt::Key_Up);
        press(Qt::Key_Delete);
        QCOMPARE(vm().fileCount(), 4);
        QTRY_COMPARE(current(), u"e.wav"_qs);
        QCOMPARE(ticked(), u"b.wav c.wav"_qs);
        press(Qt::Key_Home);
        QCOMPARE(current(), u"a.wav"_qs);

        QQuickItem *rowE = nullptr;
        for (QQuickItem *row : list->property("contentItem").value<QQuickItem *>()->childItems())
            if (row->property("fileName").toString() == u"e.wav" && row->isVisible())
                rowE = row;
        click(rowE, Qt::ShiftModifier);
        QCOMPARE(ticked(), u"b.wav c.wav e.wav"_qs);
        QCOMPARE(current(), u"e.wav"_qs);
        item<QObject>("itemDetailSheet")->setProperty("showDetails", true); // every opening folds
        press(Qt::Key_Return);
        QTRY_VERIFY(isOpen("itemDetailSheet"));
        QVERIFY(!item<QObject>("itemDetailSheet")->property("showDetails").toBool());
        QCOMPARE(item<QObject>("itemDetailSheet")->property("fileName").toString(), u"e.wav"_qs);
        click(item("detailDone"));
        QTRY_VERIFY(!isOpen("itemDetailSheet"));

        // Processing: the list is gone and its keys with it; Escape stops a short run.
        f().setOutputFolder();
        press(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(vm().screenState(), AppScreenState::Processing);
        QTRY_VERIFY(!list->isVisible());
        press(Qt::Key_Delete);
        press(Qt::Key_Space);
        QCOMPARE(vm().fileCount(), 4);
        QCOMPARE(ticked(), u"b.wav c.wav e.wav"_qs);
        press(Qt::Key_Escape);
        QCOMPARE(vm().screenState(), AppScreenState::Idle);

        // Ctrl+Q leaves the event loop; exit code 7 would mean it never did.
        QTimer::singleShot(0, this, [this] { press(Qt::Key_Q, Qt::ControlModifier); });
        QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(7); });
        QCOMPARE(QCoreApplication::exec(), 0);
    }

    // An import that adds nothing says so on the empty queue; the language menu
    // changes every text at once, the controller's and the window's own.
    void importNoticesAndTheLanguageMenu()
    {
        vm().importPaths(f().files({u"Reel/a.flac"_qs, u"Reel/b.flac"_qs}));
        QTRY_VERIFY(item("emptyImportNotice")->isVisible());
        QCOMPARE(textOf("emptyImportNotice"), u"2 files skipped: unsupported format (flac)"_qs);
        QVERIFY(f().importMeasured({u"a.wav"_qs}));

        auto *menu = item<QObject>("languageMenu");
        QMetaObject::invokeMethod(menu, "open");
        QTRY_VERIFY(menu->property("opened").toBool());
        QQuickItem *russian = nullptr;
        QMetaObject::invokeMethod(menu, "itemAt", Q_RETURN_ARG(QQuickItem *, russian),
                                  Q_ARG(int, 2));
        QVERIFY(russian);
        QMetaObject::invokeMethod(russian, "triggered");
        QCOMPARE(m_language.manager().selection(), AppLanguage::Ru);
        QTRY_VERIFY(russian->property("current").toBool());
        QCOMPARE(textOf("subtitle"), u"Пакетная нормализация громкости и конвертация аудио"_qs);
        QCOMPARE(textOf("statusText"), u"1 файл готов"_qs);
        QCOMPARE(f().cell(u"a.wav"_qs, QueueModel::StatusTextRole), u"Готов"_qs);
        QCOMPARE(textOf("importNotice"), u"1 файл добавлен"_qs);
    }

    void aLongRunIsNotStoppedWithoutAsking()
    {
        QVERIFY(f().importMeasured({u"a.wav"_qs, u"b.wav"_qs}));
        f().setOutputFolder();
        vm().process();
        QVERIFY(window()->title().startsWith(u"Processing 0 of 2"));
        click(item("aboutButton"));
        QTRY_VERIFY(isOpen("aboutSheet"));
        press(Qt::Key_Escape);
        QTRY_VERIFY(!item<QObject>("aboutSheet")->property("visible").toBool());

        click(item("licensesButton"));
        QTRY_VERIFY(isOpen("licensesSheet"));
        // FFmpeg's text ships in the build tree.
        QTRY_VERIFY(item("licenseToggle_0") && item("licenseToggle_0")->isVisible());
        click(item("licenseToggle_0"));
        QCOMPARE(item<QObject>("licensesSheet")->property("expandedIndex").toInt(), 0);
        click(item("licensesDone"));
        QTRY_VERIFY(!item<QObject>("licensesSheet")->property("visible").toBool());

        // "A few seconds" is the controller's own bound: wait past it.
        QTest::qWait(MainViewModel::confirmAfterMilliseconds + 200);
        QVERIFY(vm().stoppingNeedsConfirmation());

        press(Qt::Key_Escape);
        QTRY_VERIFY(isOpen("stopRunSheet"));
        click(item("keepGoing"));
        QTRY_VERIFY(!isOpen("stopRunSheet"));
        QCOMPARE(vm().screenState(), AppScreenState::Processing);

        // Closing the window asks too; Stop ends the run.
        window()->close();
        QTRY_VERIFY(isOpen("stopRunSheet"));
        QVERIFY(window()->isVisible());
        QCOMPARE(item<QObject>("stopRunSheet")->property("quitAfter").toBool(), true);
        item<QObject>("stopRunSheet")->setProperty("quitAfter", false); // the test's loop stays
        click(item("stopRunConfirm"));
        QTRY_COMPARE(vm().screenState(), AppScreenState::Idle);
    }

    // The panels write the settings; the next launch starts where the user left.
    void settingsPanelsWriteWhatTheNextLaunchRestores()
    {
        item("bitDepthPicker")->forceActiveFocus();
        press(Qt::Key_Right);
        QCOMPARE(vm().settings().bitDepth, OutputBitDepth::Float32);
        QMetaObject::invokeMethod(item<QObject>("formatPicker"), "activated", Q_ARG(int, 3));
        QCOMPARE(vm().settings().outputFormatMode, OutputFormatMode::Mp3);
        QVERIFY(!item("bitDepthPicker")->isEnabled());
        QMetaObject::invokeMethod(item<QObject>("presetPicker"), "activated", Q_ARG(int, 6));
        QVERIFY(vm().settings().selectedPreset.isCustom);
        auto *custom = item("customTargetField");
        QTRY_VERIFY(custom->isVisible());
        custom->setProperty("text", u"-18,25"_qs);
        QMetaObject::invokeMethod(custom, "textEdited");
        QCOMPARE(vm().settings().customTargetLUFS, -18.25); // taken as typed, within -70..-5
        custom->setProperty("text", u"-3"_qs);
        QMetaObject::invokeMethod(custom, "textEdited");
        QCOMPARE(vm().settings().customTargetLUFS, -18.25);
        QVERIFY(custom->property("invalid").toBool());
        item("ceilingField")->forceActiveFocus(); // steps in tenths
        press(Qt::Key_Up);
        QCOMPARE(vm().settings().truePeakCeiling, -0.9);
        QMetaObject::invokeMethod(item<QObject>("ceilingField"), "realValueEdited",
                                  Q_ARG(double, -2.34));
        QCOMPARE(vm().settings().truePeakCeiling, -2.3);
        item("prefixSwitch")->setProperty("checked", true);
        QMetaObject::invokeMethod(item<QObject>("prefixSwitch"), "toggled");
        QVERIFY(vm().settings().addPrefix);
        window()->resize(1300, 860);
        QTRY_COMPARE(window()->size(), QSize(1300, 860));
        const ProcessingSettings chosen = vm().settings();

        m_app.reset();
        launch();
        QCOMPARE(vm().settings(), chosen);
        QCOMPARE(window()->size(), QSize(1300, 860));
    }

    // Settings panels open too: every control is named for screen readers, and Tab
    // walks the screen top to bottom showing a focus ring or the outlined current row.
    void everyControlIsNamedAndEveryTabStopShown()
    {
        QVERIFY(f().importMeasured({u"a.wav"_qs, u"b.wav"_qs}));
        f().setOutputFolder();
        window()->setProperty("settingsOpen", true);
        QQuickItem *list = item("queueList");
        QQuickItem *column = item("idleColumn");
        QQuickItem *panels = item("settingsPanels");
        QTRY_VERIFY(panels->y() + panels->height() <= item("queueTable")->y());
        QStringList unnamed;
        int controls = 0;
        for (QQuickItem *node : tree(window()->contentItem())) {
            if (!node->isVisible() ||
                !(node->inherits("QQuickAbstractButton") || node->inherits("QQuickComboBox") ||
                  node->inherits("QQuickSpinBox") || node->inherits("QQuickTextField")))
                continue;
            ++controls;
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(node);
            if (!accessible || accessible->text(QAccessible::Name).isEmpty())
                unnamed.append(node->objectName() + u' ' +
                               QLatin1StringView(node->metaObject()->className()));
        }
        QVERIFY2(controls >= 20, qPrintable(QString::number(controls)));
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(u", ")));

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
                const auto *row = list->property("currentItem").value<QQuickItem *>();
                QVERIFY(row->property("isCurrent").toBool());
                continue;
            }
            // The ring belongs to the control; focus may sit on an item inside it.
            QQuickItem *ring = nullptr;
            for (QQuickItem *control = stop; control && !ring; control = control->parentItem())
                ring = visualChild(control, QLatin1StringView("focusRing"));
            QVERIFY2(ring && ring->isVisible(), name.constData());
        }
        QVERIFY2(stops.size() >= 15 && stops.size() < 60, "Tab does not go round the screen");
        QVERIFY(listReached);
    }

    // In the narrowest window, on each screen and in each language: nothing a user reads
    // is under 11 px, no text that carries a number is cut off, and the settings panels
    // sit side by side.
    void textsAreReadableAndNumbersWhole()
    {
        window()->resize(900, 680);
        window()->setProperty("settingsOpen", true);
        ProcessingSettings settings = vm().settings();
        settings.selectedPreset = *LoudnessPreset::builtIn(u"music_playback");
        vm().setSettings(settings);
        vm().importPaths(f().numberedFiles(22));
        f().analyzer->release(ControllerFixture::takes(1, 3), GatedAnalyzer::measures());
        QTRY_COMPARE(vm().analysisDone(), 3);
        checkTexts("measuring");

        QVERIFY(f().measureAll());
        f().setOutputFolder();
        vm().process();
        f().processor->release(ControllerFixture::takes(1, 2), GatedProcessor::writes());
        QTRY_COMPARE(vm().processedCount(), 2);
        QCOMPARE(item("progress")->property("value").toReal(), 2.0 / 22);
        checkTexts("processing");

        f().processor->release({ControllerFixture::take(22)},
                               GatedProcessor::fails(ProcessingError::writeFailed(u"x"_qs)));
        f().processor->release(ControllerFixture::takes(3, 21), GatedProcessor::writes());
        QTRY_COMPARE(vm().screenState(), AppScreenState::Completed);
        checkTexts("completed");
    }

    // The dialogs as they would open, never shown.
    void dialogsTakeWhatTheyShould()
    {
        using Panel = FilePanelPresenter::Panel;
        m_language.manager().setSelection(AppLanguage::Ru);
        const auto files = FilePanelPresenter::makeDialog(Panel::Files, {u"wav"_qs, u"m4a"_qs});
        QCOMPARE(files->fileMode(), QFileDialog::ExistingFiles);
        QCOMPARE(files->nameFilters(), QStringList{u"Аудиофайлы (*.wav *.m4a)"_qs});
        const auto folders = FilePanelPresenter::makeDialog(Panel::Folders);
        QCOMPARE(folders->fileMode(), QFileDialog::Directory);
        QVERIFY(folders->testOption(QFileDialog::ShowDirsOnly));
        const auto destination = FilePanelPresenter::makeDialog(Panel::Destination);
        QCOMPARE(destination->fileMode(), QFileDialog::Directory);
        QCOMPARE(destination->windowTitle(), u"Выберите, куда сохранять подготовленное аудио"_qs);
        // Several folders at once, one destination.
        const QString view = u"listView"_qs;
        QCOMPARE(folders->findChild<QAbstractItemView *>(view)->selectionMode(),
                 QAbstractItemView::ExtendedSelection);
        QCOMPARE(destination->findChild<QAbstractItemView *>(view)->selectionMode(),
                 QAbstractItemView::SingleSelection);
        const auto save =
            FilePanelPresenter::makeDialog(Panel::Save, {u"csv"_qs}, u"Tonbrook Report.csv"_qs);
        QCOMPARE(save->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(save->defaultSuffix(), u"csv"_qs);
        QCOMPARE(save->nameFilters(), QStringList{u"CSV (*.csv)"_qs});
        QCOMPARE(QFileInfo(save->selectedFiles().value(0)).fileName(), u"Tonbrook Report.csv"_qs);
        QVERIFY(!save->testOption(QFileDialog::DontConfirmOverwrite));
        for (const QFileDialog *dialog :
             {files.get(), folders.get(), destination.get(), save.get()}) {
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog) && dialog->isModal());
        }
    }

private:
    void checkTexts(const char *screen)
    {
        for (const AppLanguage language : {AppLanguage::En, AppLanguage::Ru}) {
            m_language.manager().setSelection(language);
            QTest::qWait(50); // layouts settle
            QQuickItem *panels = item("settingsPanels");
            QVERIFY(!shown(panels) || panels->property("columns").toInt() == 3);
            checkTextsNow(screen);
        }
    }

    void checkTextsNow(const char *screen)
    {
        int numbers = 0;
        for (QQuickItem *text : tree(window()->contentItem())) {
            const QString content = text->property("text").toString();
            if (!(text->inherits("QQuickText") || text->inherits("QQuickTextInput")) ||
                content.isEmpty() || !shown(text))
                continue;
            const QFont font = text->property("font").value<QFont>();
            const qreal pixels =
                font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 96.0 / 72.0;
            const QByteArray where = screen + QByteArray(": ") + content.toUtf8();
            QVERIFY2(pixels >= 11, where.constData());
            // File names and paths give way in the middle; counts and values never do.
            static const QRegularExpression digit(u"\\d"_qs);
            if (!content.contains(digit) || text->property("elide").toInt() == Qt::ElideMiddle)
                continue;
            QVERIFY2(!text->property("truncated").toBool() &&
                         text->property("contentWidth").toReal() <= text->width() + 1,
                     where.constData());
            ++numbers;
        }
        QVERIFY(numbers >= 2);
    }

    static bool shown(QQuickItem *item)
    {
        for (; item; item = item->parentItem())
            if (!item->isVisible() || item->opacity() == 0)
                return false;
        return true;
    }
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// The queue, the selection, the output folder and the texts derived from them.
#include "../localization/LanguageFixture.h"
#include "ControllerFixture.h"
#include "localization/L.h"

#include <QSignalSpy>
#include <QTest>

class QueueManagementTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void init() { m_language.manager().setSelection(AppLanguage::En); }

    void importNotice()
    {
        ControllerFixture f;
        const QStringList first =
            f.files({QStringLiteral("a.wav"), QStringLiteral("b.wav"), QStringLiteral("c.wav")});
        f.vm().importPaths(first +
                           f.files({QStringLiteral("notes.txt"), QStringLiteral("cover.jpg")}) +
                           QStringList{first.first()});
        QCOMPARE(f.vm().importNotice(),
                 std::optional(QStringLiteral(
                     "3 added \u00b7 1 already in queue \u00b7 2 files skipped: unsupported "
                     "format (jpg, txt)")));
        f.vm().importPaths({}); // nothing given: the notice stays
        QVERIFY(f.vm().importNotice());
        f.vm().importPaths({first.last()});
        QCOMPARE(f.vm().importNotice(), std::optional(QStringLiteral("1 already in queue")));
        f.vm().importPaths({f.dir.filePath(QStringLiteral("empty"))}); // missing: unsupported
        f.files({QStringLiteral("quiet/readme.txt")});
        f.vm().importPaths(
            {f.dir.filePath(QStringLiteral("in/quiet"))}); // nothing new, nothing skipped
        QCOMPARE(f.vm().importNotice(), std::nullopt);
        // The last notice follows the language.
        f.vm().importPaths({first.first()});
        m_language.manager().setSelection(AppLanguage::Ru);
        f.vm().retranslate();
        QCOMPARE(f.vm().importNotice(), std::optional(QStringLiteral("1 файл уже в очереди")));
    }

    void importsThatAddNothingSaySo_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("russian");
        QTest::newRow("a folder of FLACs")
            << QStringList{u"Reel/a.flac"_qs, u"Reel/b.FLAC"_qs, u"Reel/c.flac"_qs,
                           u"Reel/notes.txt"_qs}
            << u"3 files skipped: unsupported format (flac)"_qs
            << u"3 файла пропущены: неподдерживаемый формат (flac)"_qs;
        QTest::newRow("one of two formats")
            << QStringList{u"Reel/a.ogg"_qs, u"Reel/b.opus"_qs}
            << u"2 files skipped: unsupported format (ogg, opus)"_qs
            << u"2 файла пропущены: неподдерживаемый формат (ogg, opus)"_qs;
        QTest::newRow("a single file")
            << QStringList{u"Reel/a.wma"_qs} << u"1 file skipped: unsupported format (wma)"_qs
            << u"1 файл пропущен: неподдерживаемый формат (wma)"_qs;
        QTest::newRow("21 of them") <<
            [] {
                QStringList names;
                for (int i = 0; i < 21; ++i)
                    names.append(u"Reel/%1.flac"_qs.arg(i));
                return names;
            }() << u"21 files skipped: unsupported format (flac)"_qs
                                    << u"21 файл пропущен: неподдерживаемый формат (flac)"_qs;
    }

    void importsThatAddNothingSaySo()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, english);
        QFETCH(QString, russian);
        ControllerFixture f;
        f.files(files);
        f.vm().importPaths({f.dir.filePath(QStringLiteral("in/Reel"))});
        QVERIFY(f.vm().queue().isEmpty());
        QCOMPARE(f.vm().importNotice(), std::optional(english));
        m_language.manager().setSelection(AppLanguage::Ru);
        f.vm().retranslate();
        QCOMPARE(f.vm().importNotice(), std::optional(russian));
    }

    void importsInTheBackground()
    {
        ControllerFixture f;
        QStringList names;
        for (int i = 1; i <= 12000; ++i) // more than one slice of rows
            names.append(QStringLiteral("Big/%1/take %2.wav").arg(i % 7).arg(i));
        f.files(names);
        f.files({QStringLiteral("Small/a.wav"), QStringLiteral("Small/b.wav")});
        const QString big = f.dir.filePath(QStringLiteral("in/Big"));
        const QString small = f.dir.filePath(QStringLiteral("in/Small"));

        // Cancelled before anything was shown: nothing comes in.
        f.vm().importInBackground({big});
        QVERIFY(f.vm().isImporting());
        f.vm().cancelImport();
        QTRY_VERIFY(!f.vm().isImporting());
        QVERIFY(f.vm().queue().isEmpty());
        QCOMPARE(f.vm().importNotice(), std::nullopt);

        // A second import waits for the first, so nothing comes in twice.
        f.vm().importInBackground({big});
        f.vm().importInBackground({small, big});
        QVERIFY(f.vm().isImporting());
        QTRY_VERIFY_WITH_TIMEOUT(!f.vm().isImporting(), 30000);
        QCOMPARE(f.vm().queue().size(), 12002);
        QCOMPARE(f.vm().importFoundCount(), 2);
        QCOMPARE(f.vm().importNotice(),
                 std::optional(QStringLiteral("2 added \u00b7 12000 already in queue")));
        QVERIFY(f.vm().isAnalyzing());
    }

    void theListSortsAndFilters()
    {
        ControllerFixture f;
        f.vm().importPaths({f.dir.filePath(QStringLiteral("in"))});
        QVERIFY(f.vm().queue().isEmpty());
        f.files({QStringLiteral("Reel 2/take 10.wav"), QStringLiteral("Reel 2/take 9.wav"),
                 QStringLiteral("Reel 1/take 2.wav"), QStringLiteral("Reel 10/take 1.wav")});
        f.vm().importPaths({f.dir.filePath(QStringLiteral("in"))});
        // Queue order: the scanner's (Reel 1, Reel 2, Reel 10; take 9 before take 10).
        f.analyzer->gate.release(QStringLiteral("take 2.wav"), ControllerFixture::measured(-30));
        f.analyzer->gate.release(QStringLiteral("take 9.wav"), ControllerFixture::measured(-12));
        f.analyzer->gate.release(QStringLiteral("take 10.wav"), std::nullopt);
        f.analyzer->gate.release(QStringLiteral("take 1.wav"), ControllerFixture::measured(-20));
        QTRY_VERIFY(!f.vm().isAnalyzing());

        QueueView &view = *f.vm().queueView();
        const auto shown = [&view] {
            QStringList names;
            for (int row = 0; row < view.rowCount(); ++row)
                names.append(view.data(view.index(row, 0), QueueModel::FileNameRole).toString());
            return names.join(u", ");
        };
        QCOMPARE(shown(), QStringLiteral("take 2.wav, take 9.wav, take 10.wav, take 1.wav"));
        view.sortBy(QueueView::SortKey::Name);
        QCOMPARE(shown(), QStringLiteral("take 1.wav, take 2.wav, take 9.wav, take 10.wav"));
        view.sortBy(QueueView::SortKey::Name);
        QVERIFY(!view.ascending());
        QCOMPARE(shown(), QStringLiteral("take 10.wav, take 9.wav, take 2.wav, take 1.wav"));
        view.sortBy(QueueView::SortKey::Name); // a third time: the queue's own order
        QCOMPARE(view.sortKey(), QueueView::SortKey::QueueOrder);
        QCOMPARE(shown(), QStringLiteral("take 2.wav, take 9.wav, take 10.wav, take 1.wav"));
        view.sortBy(QueueView::SortKey::Loudness);
        QCOMPARE(shown(), QStringLiteral("take 10.wav, take 2.wav, take 1.wav, take 9.wav"));
        view.sortBy(QueueView::SortKey::Folder);
        QCOMPARE(shown(), QStringLiteral("take 2.wav, take 9.wav, take 10.wav, take 1.wav"));

        // Rows follow their items as they change.
        view.sortBy(QueueView::SortKey::Status);
        f.vm().setStatus(ProcessingStatus::failed(QStringLiteral("x")), f.idOf(u"take 1.wav"_qs));
        QCOMPARE(shown().section(u',', 0, 0), QStringLiteral("take 1.wav"));

        view.setFilter(QueueView::Filter::Failed);
        QCOMPARE(shown(), QStringLiteral("take 1.wav"));
        QCOMPARE(view.rowCountShown(), 1);
        view.setFilter(QueueView::Filter::NotMeasured);
        QCOMPARE(shown(), QStringLiteral("take 10.wav"));
        // A filter hides, it does not touch: the queue and its targets are whole.
        QCOMPARE(f.vm().effectiveTargetIDs().size(), 4);
        view.setFilter(QueueView::Filter::All);
        QCOMPARE(view.rowCountShown(), 4);
    }

    void selectionAndTargets()
    {
        ControllerFixture f;
        QVERIFY(!f.vm().allSelected());
        f.vm().toggleSelectAll(); // an empty queue is never "all selected"
        QVERIFY(f.vm().selectedIDs().isEmpty());
        f.vm().importPaths(f.numberedFiles(5));
        const QList<AudioFileItem> items = f.vm().queue();
        f.vm().toggleSelection(items[3].id);
        f.vm().toggleSelection(items[1].id);
        f.vm().toggleSelection(QUuid::createUuid()); // not queued: ignored
        QCOMPARE(f.vm().effectiveTargetIDs(), (QList<QUuid>{items[1].id, items[3].id}));
        QVERIFY(f.vm()
                    .queueModel()
                    ->data(f.vm().queueModel()->index(1), QueueModel::SelectedRole)
                    .toBool());
        f.vm().removeSelected();
        QCOMPARE(f.vm().effectiveTargetIDs(),
                 (QList<QUuid>{items[0].id, items[2].id, items[4].id}));
        f.vm().toggleSelectAll();
        QVERIFY(f.vm().allSelected());
        f.vm().toggleSelectAll();
        QVERIFY(!f.vm().hasSelection());
    }

    // Shift ranges over the list as shown: Take 2, 4 and 5 are not measured, so
    // by loudness the rows are Take 2, 4, 5, 6, 3, 1. The anchor is set with
    // every file shown, then the filter applies, then Shift moves to each target.
    void rangesFollowTheOrderShown_data()
    {
        QTest::addColumn<QueueView::Filter>("filter");
        QTest::addColumn<QList<int>>("ticked"); // takes ticked beforehand
        QTest::addColumn<int>("anchor");        // -1: none set
        QTest::addColumn<int>("current");
        QTest::addColumn<QList<int>>("targets");
        QTest::addColumn<QList<int>>("expected");
        const auto all = QueueView::Filter::All;
        QTest::newRow("down") << all << QList<int>{} << 1 << 1 << QList{3} << QList{4, 5, 6};
        QTest::newRow("up") << all << QList<int>{} << 4 << 4 << QList{1} << QList{3, 4, 5, 6};
        QTest::newRow("back one row, ticks outside kept")
            << all << QList{1} << 0 << 0 << QList{1, 2, 1} << QList{1, 2, 4};
        QTest::newRow("back past the anchor")
            << all << QList<int>{} << 2 << 2 << QList{4, 0} << QList{2, 4, 5};
        QTest::newRow("a tick made before stays")
            << all << QList{6} << 0 << 0 << QList{4, 1} << QList{2, 4, 6};
        QTest::newRow("hidden rows between stay clear")
            << QueueView::Filter::NotMeasured << QList<int>{} << 0 << 0 << QList{2}
            << QList{2, 4, 5};
        QTest::newRow("no anchor: from the current row")
            << all << QList<int>{} << -1 << 3 << QList{5} << QList{1, 3, 6};
        QTest::newRow("anchor filtered out: from the current row")
            << QueueView::Filter::NotMeasured << QList<int>{} << 3 << 1 << QList{2} << QList{4, 5};
    }

    void rangesFollowTheOrderShown()
    {
        QFETCH(QueueView::Filter, filter);
        QFETCH(QList<int>, ticked);
        QFETCH(int, anchor);
        QFETCH(int, current);
        QFETCH(QList<int>, targets);
        QFETCH(QList<int>, expected);
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(6));
        for (int take = 1; take <= 6; ++take)
            f.analyzer->gate.release(QStringLiteral("Take %1.wav").arg(take),
                                     take == 2 || take == 4 || take == 5
                                         ? std::nullopt
                                         : std::optional(ControllerFixture::measured(-10 - take)));
        QTRY_VERIFY(!f.vm().isAnalyzing());
        const auto idOf = [&f](int take) {
            return f.idOf(QStringLiteral("Take %1.wav").arg(take));
        };
        for (const int take : std::as_const(ticked))
            f.vm().toggleSelection(idOf(take));
        QueueView &view = *f.vm().queueView();
        view.sortBy(QueueView::SortKey::Loudness);
        view.setAnchor(anchor);
        view.setFilter(filter);

        QSignalSpy rowsChanged(f.vm().queueModel(), &QAbstractItemModel::dataChanged);
        QSignalSpy derived(&f.vm(), &MainViewModel::derivedChanged);
        for (const int target : std::as_const(targets)) {
            view.extendSelection(target, current);
            current = target;
        }
        QSet<QUuid> wanted;
        for (const int take : std::as_const(expected))
            wanted.insert(idOf(take));
        QCOMPARE(f.vm().selectedIDs(), wanted);
        // One change per step however long the range, and the window hears of it.
        QCOMPARE(rowsChanged.count(), targets.size());
        QCOMPARE(derived.count(), targets.size());
    }

    void oneRowChangesAtATime()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(3));
        QSignalSpy changed(f.vm().queueModel(), &QAbstractItemModel::dataChanged);
        f.vm().setStatus(ProcessingStatus::done(), f.vm().queue()[1].id);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).value<QModelIndex>().row(), 1);
        QCOMPARE(changed.first().at(1).value<QModelIndex>().row(), 1);
    }

    void countsFollowImportsResultsAndRemovals()
    {
        ControllerFixture f;
        f.files({QStringLiteral("Drums/Kicks/k1.wav"), QStringLiteral("Drums/Kicks/k2.wav"),
                 QStringLiteral("Drums/snare.wav")});
        f.vm().importPaths({f.dir.filePath(QStringLiteral("in"))});
        f.vm().importPaths(f.files({QStringLiteral("alone.wav")}));
        QCOMPARE(f.vm().folderCount(), 2);
        QCOMPARE(f.vm().fileCount(), 4);

        for (const QString &name :
             {QStringLiteral("k1.wav"), QStringLiteral("snare.wav"), QStringLiteral("alone.wav")})
            f.analyzer->gate.release(name, ControllerFixture::measured());
        QTRY_COMPARE(f.vm().analysisDone(), 3);
        QVERIFY(f.vm().hasUnanalyzedFiles()); // k2 is still being measured

        // A folder counts until its last file goes; the unmeasured file with it.
        f.vm().removeItem(f.item(QStringLiteral("k1.wav")).id);
        QCOMPARE(f.vm().folderCount(), 2);
        f.vm().toggleSelection(f.item(QStringLiteral("k2.wav")).id);
        f.vm().toggleSelection(f.item(QStringLiteral("alone.wav")).id);
        f.vm().removeSelected();
        QCOMPARE(f.vm().folderCount(), 1);
        QVERIFY(!f.vm().hasUnanalyzedFiles());
        f.vm().clearQueue();
        QCOMPARE(f.vm().folderCount(), 0);
        f.vm().importPaths({f.dir.filePath(QStringLiteral("in"))});
        QCOMPARE(f.vm().folderCount(), 2);
        QVERIFY(f.vm().hasUnanalyzedFiles());
    }

    void outputFolderWarningAndMemory()
    {
        ControllerFixture f;
        f.vm().importPaths({f.dir.filePath(QStringLiteral("in"))});
        f.vm().importPaths(f.files({QStringLiteral("src/a.wav")}));
        f.panels->destination = f.dir.filePath(QStringLiteral("in/src/out"));
        f.vm().chooseOutputFolder();
        QCOMPARE(f.vm().outputWarning(), std::optional(L::text(L::WarnInsideSource)));
        QCOMPARE(f.preferences->value(QStringLiteral("outputFolderBookmark")).toByteArray(),
                 f.panels->destination->toUtf8());
        f.vm().clearQueue();
        QCOMPARE(f.vm().outputWarning(), std::nullopt);

        // A cancelled dialog changes nothing.
        f.panels->destination.reset();
        f.vm().chooseOutputFolder();
        QCOMPARE(f.vm().settings().outputFolder,
                 std::optional(f.dir.filePath(QStringLiteral("in/src/out"))));

        // The next controller on the same preferences finds the folder again, unless it has one.
        QDir().mkpath(f.dir.filePath(QStringLiteral("in/src/out")));
        ControllerFixture next;
        next.preferences->setValue(QStringLiteral("outputFolderBookmark"),
                                   f.dir.filePath(QStringLiteral("in/src/out")).toUtf8());
        next.vm().restoreOutputFolder();
        QCOMPARE(next.vm().settings().outputFolder,
                 std::optional(f.dir.filePath(QStringLiteral("in/src/out"))));
    }

    void toolbarAndFooterTexts()
    {
        ControllerFixture f;
        QCOMPARE(f.vm().processButtonTitle(), QStringLiteral("Process Files"));
        QVERIFY(!f.vm().canProcess());
        QCOMPARE(f.vm().statusText(), QStringLiteral("0 files ready"));
        QCOMPARE(f.vm().footerTrailingText(), QStringLiteral("No output folder selected"));
        f.vm().importPaths(f.numberedFiles(5));
        QCOMPARE(f.vm().processButtonTitle(), QStringLiteral("Process 5 Files"));
        QVERIFY(!f.vm().canProcess()); // files, but nowhere to write them
        f.setOutputFolder();
        QVERIFY(f.vm().canProcess());
        QCOMPARE(f.vm().footerLeadingText(), QStringLiteral("5 files"));
        m_language.manager().setSelection(AppLanguage::Ru);
        QCOMPARE(f.vm().processButtonTitle(), QStringLiteral("Обработать 5 файлов"));
    }

    void reportExport()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(2));
        f.vm().exportReport(); // no results yet: nothing is asked
        QCOMPARE(f.panels->saveRequests, 0);

        f.setOutputFolder();
        f.analyzer->gate.release(QStringLiteral("Take 1.wav"), ControllerFixture::measured());
        f.analyzer->gate.release(QStringLiteral("Take 2.wav"), ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        f.vm().process();
        f.processor->gate.release(QStringLiteral("Take 1.wav"), GatedProcessor::writes());
        f.processor->gate.release(QStringLiteral("Take 2.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        f.vm().exportReport(); // cancelled
        QCOMPARE(f.panels->saveRequests, 1);
        // Proposed in the output folder.
        QCOMPARE(f.panels->proposedName, f.dir.filePath(QStringLiteral("out/Tonbrook Report.csv")));
        QCOMPARE(f.vm().reportError(), std::nullopt);
        f.panels->savePath = f.dir.filePath(QStringLiteral("no such folder/report.csv"));
        f.vm().exportReport();
        QVERIFY(f.vm().reportError());
        QVERIFY(f.vm().reportError()->startsWith(QStringLiteral("Could not save the report: ")));
        f.panels->savePath = f.dir.filePath(QStringLiteral("report.csv"));
        f.vm().exportReport();
        QCOMPARE(f.vm().reportError(), std::nullopt);
        QFile report(*f.panels->savePath);
        QVERIFY(report.open(QIODevice::ReadOnly));
        QCOMPARE(report.readAll().count("\r\n"), 3);

        f.vm().startNewBatch();
        QCOMPARE(f.vm().screenState(), AppScreenState::Idle);
        QVERIFY(f.vm().queue().isEmpty());
        QVERIFY(!f.vm().completionSummary());
    }
};

QTEST_GUILESS_MAIN(QueueManagementTest)
#include "QueueManagementTest.moc"

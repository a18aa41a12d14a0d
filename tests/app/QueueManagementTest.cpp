// SPDX-License-Identifier: GPL-3.0-or-later
//
// The queue, the selection, the output folder and the texts derived from them.
// What the window's flows already show (drops, notices in two languages, the
// process button and footer) is left to the window tests.
#include "../localization/LanguageFixture.h"
#include "ControllerFixture.h"
#include "localization/L.h"

#include <QSignalSpy>
#include <QTest>

using F = ControllerFixture;
using SortKey = QueueView::SortKey;
using Filter = QueueView::Filter;

class QueueManagementTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void importNotices_data()
    {
        QTest::addColumn<QList<QStringList>>("imports"); // paths under in/, one list per import
        QTest::addColumn<QString>("notice");             // empty: none at all
        QTest::newRow("added, queued, skipped")
            << QList<QStringList>{{u"a.wav"_qs, u"b.wav"_qs, u"n.txt"_qs, u"c.jpg"_qs, u"a.wav"_qs}}
            << u"2 added \u00b7 1 already in queue \u00b7 2 files skipped: unsupported format "
               u"(jpg, txt)"_qs;
        QTest::newRow("nothing given: the notice stays")
            << QList<QStringList>{{u"a.wav"_qs}, {}} << u"1 added"_qs;
        QTest::newRow("nothing new, nothing skipped")
            << QList<QStringList>{{u"missing"_qs}, {u"quiet"_qs}} << QString();
    }

    void importNotices()
    {
        QFETCH(QList<QStringList>, imports);
        QFETCH(QString, notice);
        ControllerFixture f;
        f.files({u"a.wav"_qs, u"b.wav"_qs, u"n.txt"_qs, u"c.jpg"_qs, u"quiet/n.txt"_qs});
        for (const QStringList &paths : std::as_const(imports)) {
            QStringList absolute;
            for (const QString &path : paths)
                absolute.append(f.dir.filePath(u"in/"_qs + path));
            f.vm().importPaths(absolute);
        }
        QCOMPARE(f.vm().importNotice().value_or(QString()), notice);
    }

    void importsInTheBackground()
    {
        ControllerFixture f;
        QStringList names;
        for (int i = 1; i <= 6000; ++i) // more than one slice of rows
            names.append(u"Big/%1/take %2.wav"_qs.arg(i % 7).arg(i));
        f.files(names << u"Small/a.wav"_qs << u"Small/b.wav"_qs);
        const QString big = f.dir.filePath(u"in/Big"_qs);

        // Cancelled before anything was shown: nothing comes in.
        f.vm().importInBackground({big});
        f.vm().cancelImport();
        QTRY_VERIFY(!f.vm().isImporting());
        QVERIFY(f.vm().queue().isEmpty());
        QCOMPARE(f.vm().importNotice(), std::nullopt);

        // A second import waits for the first, so nothing comes in twice.
        f.vm().importInBackground({big});
        f.vm().importInBackground({f.dir.filePath(u"in/Small"_qs), big});
        QTRY_VERIFY_WITH_TIMEOUT(!f.vm().isImporting(), 30000);
        QCOMPARE(f.vm().queue().size(), 6002);
        QCOMPARE(f.vm().importFoundCount(), 2);
        QCOMPARE(f.vm().importNotice(), std::optional(u"2 added \u00b7 6000 already in queue"_qs));
        QVERIFY(f.vm().isAnalyzing());
    }

    // Queue order: take 2 (Reel 10), take 9 (Reel 1), take 1 and take 10 (Reel 2).
    // Loudness: take 2 -30, take 9 -12, take 10 unreadable, take 1 -20; take 1 then fails.
    void theListSortsAndFilters_data()
    {
        QTest::addColumn<QList<SortKey>>("presses");
        QTest::addColumn<Filter>("filter");
        QTest::addColumn<QString>("shown");
        const QString queued = u"2 9 1 10"_qs;
        QTest::newRow("queue order") << QList<SortKey>{} << Filter::All << queued;
        QTest::newRow("by name") << QList{SortKey::Name} << Filter::All << u"1 2 9 10"_qs;
        QTest::newRow("by name, descending")
            << QList{SortKey::Name, SortKey::Name} << Filter::All << u"10 9 2 1"_qs;
        QTest::newRow("a third time: queue order")
            << QList{SortKey::Name, SortKey::Name, SortKey::Name} << Filter::All << queued;
        QTest::newRow("by loudness, unmeasured as the quietest")
            << QList{SortKey::Loudness} << Filter::All << u"10 2 1 9"_qs;
        QTest::newRow("by folder") << QList{SortKey::Folder} << Filter::All << u"9 1 10 2"_qs;
        QTest::newRow("by status, as it changes")
            << QList{SortKey::Status} << Filter::All << u"1 2 9 10"_qs;
        QTest::newRow("failed") << QList<SortKey>{} << Filter::Failed << u"1"_qs;
        QTest::newRow("not measured") << QList<SortKey>{} << Filter::NotMeasured << u"10"_qs;
    }

    void theListSortsAndFilters()
    {
        QFETCH(QList<SortKey>, presses);
        QFETCH(Filter, filter);
        QFETCH(QString, shown);
        ControllerFixture f;
        f.files({u"B/Reel 10/take 2.wav"_qs, u"A/Reel 1/take 9.wav"_qs, u"A/Reel 2/take 1.wav"_qs,
                 u"A/Reel 2/take 10.wav"_qs});
        f.vm().importPaths({f.dir.filePath(u"in/B"_qs)});
        f.vm().importPaths({f.dir.filePath(u"in/A"_qs)});
        f.analyzer->release({u"take 2.wav"_qs}, GatedAnalyzer::measures(-30));
        f.analyzer->release({u"take 9.wav"_qs}, GatedAnalyzer::measures(-12));
        f.analyzer->release({u"take 10.wav"_qs}, std::nullopt);
        f.analyzer->release({u"take 1.wav"_qs}, GatedAnalyzer::measures(-20));
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QueueView &view = *f.vm().queueView();
        for (const SortKey key : std::as_const(presses))
            view.sortBy(key);
        view.setFilter(filter);
        f.vm().setStatus(ProcessingStatus::failed(u"x"_qs), f.item(u"take 1.wav"_qs).id);

        QStringList names;
        for (int row = 0; row < view.rowCountShown(); ++row)
            names.append(view.data(view.index(row, 0), QueueModel::FileNameRole).toString());
        QCOMPARE(names.join(u' ').remove(u"take "_qs).remove(u".wav"_qs), shown);
        // A filter hides, it does not touch: the queue and its targets are whole.
        QCOMPARE(f.vm().effectiveTargetIDs().size(), 4);
    }

    void selectionAndTargets()
    {
        ControllerFixture f;
        QCOMPARE(f.vm().processButtonTitle(), u"Process Files"_qs);
        f.vm().toggleSelectAll(); // an empty queue is never "all selected"
        QVERIFY(!f.vm().allSelected());
        f.vm().importPaths(f.numberedFiles(5));
        const QList<AudioFileItem> items = f.vm().queue();
        f.vm().toggleSelection(items[3].id);
        f.vm().toggleSelection(items[1].id);
        f.vm().toggleSelection(QUuid::createUuid()); // not queued: ignored
        QCOMPARE(f.vm().effectiveTargetIDs(), (QList<QUuid>{items[1].id, items[3].id}));
        QCOMPARE(f.cell(F::take(2), QueueModel::SelectedRole), u"true"_qs);
        QCOMPARE(f.cell(F::take(3), QueueModel::SelectedRole), u"false"_qs);
        f.vm().removeSelected();
        QCOMPARE(f.vm().effectiveTargetIDs(),
                 (QList<QUuid>{items[0].id, items[2].id, items[4].id}));
        QCOMPARE(f.vm().footerLeadingText(), u"3 files"_qs);
        f.vm().toggleSelectAll();
        f.vm().toggleSelectAll();
        QVERIFY(!f.vm().hasSelection());

        // A change to one item redraws its row alone.
        QSignalSpy changed(f.vm().queueModel(), &QAbstractItemModel::dataChanged);
        f.vm().setStatus(ProcessingStatus::done(), items[2].id);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).value<QModelIndex>().row(), 1);
        QCOMPARE(changed.first().at(1).value<QModelIndex>().row(), 1);
    }

    // Shift ranges over the list as shown: Take 2, 4 and 5 are not measured, so
    // by loudness the rows are Take 2, 4, 5, 6, 3, 1. The anchor is set with
    // every file shown, then the filter applies, then Shift moves to each target.
    void rangesFollowTheOrderShown_data()
    {
        QTest::addColumn<Filter>("filter");
        QTest::addColumn<QList<int>>("ticked"); // takes ticked beforehand
        QTest::addColumn<int>("anchor");        // -1: none set
        QTest::addColumn<int>("current");
        QTest::addColumn<QList<int>>("targets");
        QTest::addColumn<QList<int>>("expected");
        const auto all = Filter::All;
        const QList<int> none;
        QTest::newRow("up") << all << none << 4 << 4 << QList{1} << QList{3, 4, 5, 6};
        QTest::newRow("back one row, ticks outside kept")
            << all << QList{1} << 0 << 0 << QList{1, 2, 1} << QList{1, 2, 4};
        QTest::newRow("back past the anchor")
            << all << none << 2 << 2 << QList{4, 0} << QList{2, 4, 5};
        QTest::newRow("a tick made before stays")
            << all << QList{6} << 0 << 0 << QList{4, 1} << QList{2, 4, 6};
        QTest::newRow("hidden rows between stay clear")
            << Filter::NotMeasured << none << 0 << 0 << QList{2} << QList{2, 4, 5};
        QTest::newRow("no anchor: from the current row")
            << all << none << -1 << 3 << QList{5} << QList{1, 3, 6};
        QTest::newRow("anchor filtered out: from the current row")
            << Filter::NotMeasured << none << 3 << 1 << QList{2} << QList{4, 5};
    }

    void rangesFollowTheOrderShown()
    {
        QFETCH(Filter, filter);
        QFETCH(QList<int>, ticked);
        QFETCH(int, anchor);
        QFETCH(int, current);
        QFETCH(QList<int>, targets);
        QFETCH(QList<int>, expected);
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(6));
        for (int take = 1; take <= 6; ++take)
            f.analyzer->release({F::take(take)}, take == 2 || take == 4 || take == 5
                                                     ? std::nullopt
                                                     : GatedAnalyzer::measures(-10 - take));
        QTRY_VERIFY(!f.vm().isAnalyzing());
        for (const int take : std::as_const(ticked))
            f.vm().toggleSelection(f.item(F::take(take)).id);
        QueueView &view = *f.vm().queueView();
        view.sortBy(SortKey::Loudness);
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
            wanted.insert(f.item(F::take(take)).id);
        QCOMPARE(f.vm().selectedIDs(), wanted);
        // One change per step however long the range, and the window hears of it.
        QCOMPARE(rowsChanged.count(), targets.size());
        QCOMPARE(derived.count(), targets.size());
    }

    void countsFollowImportsResultsAndRemovals()
    {
        ControllerFixture f;
        f.files({u"Drums/Kicks/k1.wav"_qs, u"Drums/Kicks/k2.wav"_qs, u"Drums/snare.wav"_qs});
        f.vm().importPaths({f.dir.filePath(u"in"_qs)});
        f.vm().importPaths(f.files({u"alone.wav"_qs}));
        QCOMPARE(f.vm().folderCount(), 2);
        f.analyzer->release({u"k1.wav"_qs, u"snare.wav"_qs, u"alone.wav"_qs},
                            GatedAnalyzer::measures());
        QTRY_COMPARE(f.vm().analysisDone(), 3);
        QVERIFY(f.vm().hasUnanalyzedFiles()); // k2 is still being measured

        // A folder counts until its last file goes; the unmeasured file with it.
        f.vm().removeItem(f.item(u"k1.wav"_qs).id);
        QCOMPARE(f.vm().folderCount(), 2);
        f.vm().toggleSelection(f.item(u"k2.wav"_qs).id);
        f.vm().removeSelected();
        QCOMPARE(f.vm().folderCount(), 1);
        QVERIFY(!f.vm().hasUnanalyzedFiles());
        f.vm().clearQueue();
        QCOMPARE(f.vm().folderCount(), 0);
    }

    void outputFolderWarningAndMemory()
    {
        ControllerFixture f;
        const QString inside = f.dir.filePath(u"in/src/out"_qs);
        f.vm().importPaths(f.files({u"src/a.wav"_qs}));
        f.panels->destination = inside;
        f.vm().chooseOutputFolder();
        QCOMPARE(f.vm().outputWarning(), std::optional(L::text(L::WarnInsideSource)));
        QCOMPARE(f.vm().footerTrailingText(), inside);
        f.vm().clearQueue();
        QCOMPARE(f.vm().outputWarning(), std::nullopt);

        // A cancelled dialog changes nothing.
        f.panels->destination.reset();
        f.vm().chooseOutputFolder();
        QCOMPARE(f.vm().settings().outputFolder, std::optional(inside));

        // The next controller on the same preferences finds the folder again.
        QDir().mkpath(inside);
        ControllerFixture next;
        next.preferences->setValue(u"outputFolderBookmark"_qs,
                                   f.preferences->value(u"outputFolderBookmark"_qs));
        next.vm().restoreOutputFolder();
        QCOMPARE(next.vm().settings().outputFolder, std::optional(inside));
    }
};

QTEST_GUILESS_MAIN(QueueManagementTest)
#include "QueueManagementTest.moc"

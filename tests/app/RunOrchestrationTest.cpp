// SPDX-License-Identifier: GPL-3.0-or-later
//
// Measuring and processing runs: three at a time, results by id, progress,
// cancellation, and what a run leaves behind.
#include "../localization/LanguageFixture.h"
#include "ControllerFixture.h"
#include "localization/L.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using Analysis = GatedAnalyzer::Answer;

class RunOrchestrationTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void init() { m_language.manager().setSelection(AppLanguage::En); }

    void threeMeasuredAtOnceTheFourthWhenOneFinishes()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(10));
        QTRY_COMPARE(f.analyzer->gate.running(),
                     (QStringList{QStringLiteral("Take 1.wav"), QStringLiteral("Take 2.wav"),
                                  QStringLiteral("Take 3.wav")}));
        QVERIFY(f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisDone(), 0);
        QCOMPARE(f.vm().analysisTotal(), 10);
        // Only what is being measured says so; the rest waits its turn.
        QCOMPARE(f.statusOf(QStringLiteral("Take 1.wav")), ProcessingStatus::Kind::Analyzing);
        QCOMPARE(f.statusOf(QStringLiteral("Take 10.wav")), ProcessingStatus::Kind::Queued);
        QCOMPARE(f.vm().statusText(), QStringLiteral("Analyzing loudness\u2026 0/10"));

        f.analyzer->gate.release(QStringLiteral("Take 2.wav"), ControllerFixture::measured(-18.25));
        QTRY_COMPARE(f.vm().analysisDone(), 1);
        QTRY_COMPARE(f.analyzer->gate.started().size(), 4);
        QCOMPARE(f.analyzer->gate.started().last(), QStringLiteral("Take 4.wav"));
        QCOMPARE(f.item(QStringLiteral("Take 2.wav")).measuredLUFS, std::optional(-18.25));
        QCOMPARE(f.statusOf(QStringLiteral("Take 2.wav")), ProcessingStatus::Kind::Ready);
        QCOMPARE(f.statusOf(QStringLiteral("Take 4.wav")), ProcessingStatus::Kind::Analyzing);

        // Silence measures, but has no loudness to show; a failure leaves no measurement.
        f.analyzer->gate.release(
            QStringLiteral("Take 1.wav"),
            ControllerFixture::measured(-std::numeric_limits<double>::infinity()));
        f.analyzer->gate.release(QStringLiteral("Take 3.wav"), Analysis());
        for (int i = 4; i <= 10; ++i)
            f.analyzer->gate.release(QStringLiteral("Take %1.wav").arg(i),
                                     ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisDone(), 0);
        QCOMPARE(f.vm().analysisTotal(), 0);
        QVERIFY(f.item(QStringLiteral("Take 1.wav")).measurement);
        QVERIFY(!f.item(QStringLiteral("Take 1.wav")).measuredLUFS);
        QVERIFY(!f.item(QStringLiteral("Take 3.wav")).measurement);
        QVERIFY(f.item(QStringLiteral("Take 3.wav")).unreadable);
        QCOMPARE(f.statusOf(QStringLiteral("Take 3.wav")), ProcessingStatus::Kind::Ready);
        // Measured, silent, unreadable: three different cells.
        QCOMPARE(f.loudnessTextOf(QStringLiteral("Take 4.wav")), QStringLiteral("-20.0 LUFS"));
        QCOMPARE(f.loudnessTextOf(QStringLiteral("Take 1.wav")), QStringLiteral("Silent"));
        QCOMPARE(f.loudnessTextOf(QStringLiteral("Take 3.wav")), QStringLiteral("Unreadable"));
        // A file that could not be read is not measured again by itself.
        QVERIFY(!f.vm().hasUnanalyzedFiles());
        f.vm().analyzeQueue();
        QVERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.analyzer->gate.started().size(), 10);
    }

    void widthComesFromTheServices_data()
    {
        QTest::addColumn<int>("width");
        QTest::newRow("1") << 1;
        QTest::newRow("5") << 5;
    }

    // As many files measured at once as the services say, and as many written.
    void widthComesFromTheServices()
    {
        QFETCH(int, width);
        ControllerFixture f(width);
        f.setOutputFolder();
        f.vm().importPaths(f.numberedFiles(8));
        QTRY_COMPARE(f.analyzer->gate.running().size(), qsizetype(width));
        QTest::qWait(30);
        QCOMPARE(f.analyzer->gate.running().size(), qsizetype(width));
        for (int i = 1; i <= 8; ++i)
            f.analyzer->gate.release(QStringLiteral("Take %1.wav").arg(i),
                                     ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());

        f.vm().process();
        QTRY_COMPARE(f.processor->gate.running().size(), qsizetype(width));
        QTest::qWait(30);
        QCOMPARE(f.processor->gate.running().size(), qsizetype(width));
        f.vm().cancelProcessing();
    }

    void processedFilesKeepTheirOutcomeWhenMoreArrive()
    {
        ControllerFixture f;
        f.setOutputFolder();
        f.vm().importPaths(f.files({QStringLiteral("Kick.wav"), QStringLiteral("Snare.wav")}));
        f.vm().process();
        f.processor->gate.release(QStringLiteral("Kick.wav"), GatedProcessor::writes());
        f.processor->gate.release(
            QStringLiteral("Snare.wav"),
            GatedProcessor::fails(ProcessingError::ffmpegFailed(1, QStringLiteral("bad"))));
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        f.vm().importPaths(f.files({QStringLiteral("Late.wav")}));
        QTRY_COMPARE(f.analyzer->gate.running(), QStringList{QStringLiteral("Late.wav")});
        QCOMPARE(f.statusOf(QStringLiteral("Kick.wav")), ProcessingStatus::Kind::Done);
        QCOMPARE(f.statusOf(QStringLiteral("Snare.wav")), ProcessingStatus::Kind::Failed);
        f.analyzer->gate.release(QStringLiteral("Late.wav"), ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.statusOf(QStringLiteral("Snare.wav")), ProcessingStatus::Kind::Failed);
    }

    void aSecondImportRunsBesideTheFirst()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(10, QStringLiteral("A")));
        for (int i = 1; i <= 5; ++i)
            f.analyzer->gate.release(QStringLiteral("A %1.wav").arg(i),
                                     ControllerFixture::measured());
        QTRY_COMPARE(f.vm().analysisDone(), 5);
        f.vm().importPaths(f.numberedFiles(4, QStringLiteral("B")));
        QCOMPARE(f.vm().analysisTotal(), 14);
        QTRY_COMPARE(f.analyzer->gate.running().size(), 6);
        for (const QString &name : f.analyzer->gate.running())
            f.analyzer->gate.release(name, ControllerFixture::measured());
        for (int i = 6; i <= 10; ++i)
            f.analyzer->gate.release(QStringLiteral("A %1.wav").arg(i),
                                     ControllerFixture::measured());
        for (int i = 1; i <= 4; ++i)
            f.analyzer->gate.release(QStringLiteral("B %1.wav").arg(i),
                                     ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());
    }

    void removedWhileMeasuredIsDroppedButCounted()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(2));
        QTRY_COMPARE(f.analyzer->gate.running().size(), 2);
        QSignalSpy rows(f.vm().queueModel(), &QAbstractItemModel::dataChanged);
        f.vm().removeItem(f.idOf(QStringLiteral("Take 1.wav")));
        f.analyzer->gate.release(QStringLiteral("Take 1.wav"), ControllerFixture::measured());
        QTRY_COMPARE(f.vm().analysisDone(), 1);
        QCOMPARE(f.vm().queue().size(), 1);
        QVERIFY(rows.isEmpty()); // nothing written for the removed item
        f.analyzer->gate.release(QStringLiteral("Take 2.wav"), ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());
    }

    void clearingStopsMeasuringAndTheNextImportStartsAfresh()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(5));
        QTRY_COMPARE(f.analyzer->gate.running().size(), 3);
        f.vm().clearQueue();
        QVERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisTotal(), 0);
        QTRY_COMPARE(f.analyzer->gate.cancelled().size(), 3);
        QTRY_VERIFY(f.analyzer->gate.running().isEmpty());

        f.vm().importPaths(f.files({QStringLiteral("New.wav")}));
        QTRY_COMPARE(f.analyzer->gate.running(), QStringList{QStringLiteral("New.wav")});
        f.analyzer->gate.release(QStringLiteral("New.wav"), ControllerFixture::measured());
        QTRY_VERIFY(f.item(QStringLiteral("New.wav")).measurement);
        QCOMPARE(f.analyzer->gate.cancelled().size(), 3);
    }

    void processingRunsThreeAtATimeAndSumsUp()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(5));

        f.vm().process();
        QCOMPARE(f.vm().screenState(), AppScreenState::Processing);
        QTRY_COMPARE(f.processor->gate.running(),
                     (QStringList{QStringLiteral("Take 1.wav"), QStringLiteral("Take 2.wav"),
                                  QStringLiteral("Take 3.wav")}));
        QCOMPARE(f.statusOf(QStringLiteral("Take 1.wav")), ProcessingStatus::Kind::Processing);
        QCOMPARE(f.statusOf(QStringLiteral("Take 4.wav")), ProcessingStatus::Kind::Ready);
        QVERIFY(!f.vm().currentFileName());
        f.vm().process(); // ignored while a run is on screen

        f.processor->gate.release(QStringLiteral("Take 2.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().processedCount(), 1);
        QCOMPARE(f.vm().currentFileName(), std::optional(QStringLiteral("Take 1.wav")));
        QTRY_COMPARE(f.processor->gate.started().last(), QStringLiteral("Take 4.wav"));
        QCOMPARE(f.vm().statusText(), QStringLiteral("Processing 1 of 5"));

        f.processor->gate.release(QStringLiteral("Take 1.wav"),
                                  GatedProcessor::writes(ProcessingOutcome::PeakLimited));
        f.processor->gate.release(QStringLiteral("Take 3.wav"),
                                  GatedProcessor::fails(ProcessingError::ffmpegFailed(
                                      1, QStringLiteral("No space left on device"))));
        f.processor->gate.release(QStringLiteral("Take 4.wav"), GatedProcessor::writes());
        f.processor->gate.release(QStringLiteral("Take 5.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        QCOMPARE(f.vm().completionSummary(), std::optional(CompletionSummary{5, 3, 1, 1, true}));
        QCOMPARE(f.item(QStringLiteral("Take 1.wav")).status,
                 ProcessingStatus::warning(QStringLiteral("Target -20.00 \u2192 held back")));
        const AudioFileItem failed = f.item(QStringLiteral("Take 3.wav"));
        QCOMPARE(failed.status, ProcessingStatus::failed(
                                    L::text(L::DiskFullMessage, QStringLiteral("Take 3.wav"))));
        QCOMPARE(failed.errorDetails,
                 std::optional(QStringLiteral("ffmpeg exit code 1\n\nNo space left on device")));
        QCOMPARE(failed.result->outcome, ProcessingOutcome::Failed);
        QCOMPARE(f.revealer->revealed, QStringList{*f.vm().settings().outputFolder});
        QCOMPARE(f.vm().statusText(), QStringLiteral("Complete"));
    }

    void aSelectionRunsAloneAndProgressCountsTheWholeQueue()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(5));
        f.vm().toggleSelection(f.idOf(QStringLiteral("Take 4.wav")));
        f.vm().toggleSelection(f.idOf(QStringLiteral("Take 2.wav")));
        QCOMPARE(f.vm().processButtonTitle(), QStringLiteral("Process Selected (2)"));
        f.vm().process();
        QTRY_COMPARE(f.processor->gate.running(),
                     (QStringList{QStringLiteral("Take 2.wav"), QStringLiteral("Take 4.wav")}));
        f.processor->gate.release(QStringLiteral("Take 2.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().statusText(), QStringLiteral("Processing 1 of 5"));
        f.processor->gate.release(QStringLiteral("Take 4.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);
        QCOMPARE(f.vm().completionSummary()->totalProcessed, 2);
        QCOMPARE(f.statusOf(QStringLiteral("Take 1.wav")), ProcessingStatus::Kind::Ready);
        QVERIFY(!f.item(QStringLiteral("Take 1.wav")).result);
    }

    void cancellingNeverReadsAsFailure()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(5));
        f.vm().process();
        QTRY_COMPARE(f.processor->gate.running().size(), 3);
        // One of the three fails because it was stopped: still a cancellation.
        f.vm().cancelProcessing();
        QCOMPARE(f.vm().screenState(), AppScreenState::Idle);
        QTRY_VERIFY(f.processor->gate.running().isEmpty());
        QTRY_COMPARE(f.statusOf(QStringLiteral("Take 3.wav")), ProcessingStatus::Kind::Cancelled);
        for (const QString &name : {QStringLiteral("Take 1.wav"), QStringLiteral("Take 2.wav"),
                                    QStringLiteral("Take 3.wav")})
            QCOMPARE(f.statusOf(name), ProcessingStatus::Kind::Cancelled);
        QCOMPARE(f.statusOf(QStringLiteral("Take 4.wav")), ProcessingStatus::Kind::Ready);
        QCOMPARE(f.processor->gate.started().size(), 3);
        QVERIFY(!f.vm().completionSummary());
        QVERIFY(f.revealer->revealed.isEmpty());

        // The next run has a token of its own.
        f.vm().process();
        QTRY_COMPARE(f.processor->gate.running().size(), 3);
        QCOMPARE(f.vm().screenState(), AppScreenState::Processing);
        f.vm().cancelProcessing();
    }

    void afterARunBackRetryAndNoStaleReportError()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(3));
        f.vm().process();
        f.processor->gate.release(QStringLiteral("Take 1.wav"), GatedProcessor::writes());
        f.processor->gate.release(
            QStringLiteral("Take 2.wav"),
            GatedProcessor::fails(ProcessingError::sourceMissing(QStringLiteral("Take 2.wav"))));
        f.processor->gate.release(QStringLiteral("Take 3.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        // The completion screen names each failure and why.
        const QVariantList failures = f.vm().failures();
        QCOMPARE(failures.size(), 1);
        QCOMPARE(failures[0].toMap().value(QStringLiteral("fileName")).toString(),
                 QStringLiteral("Take 2.wav"));
        QVERIFY(failures[0]
                    .toMap()
                    .value(QStringLiteral("message"))
                    .toString()
                    .contains(u"moved or deleted"));
        f.panels->savePath = f.dir.filePath(QStringLiteral("no such folder/report.csv"));
        f.vm().exportReport();
        QVERIFY(f.vm().reportError());

        // Back to the queue: every row keeps its result.
        f.vm().backToQueue();
        QCOMPARE(f.vm().screenState(), AppScreenState::Idle);
        QCOMPARE(f.vm().queue().size(), 3);
        QCOMPARE(f.statusOf(QStringLiteral("Take 1.wav")), ProcessingStatus::Kind::Done);
        QCOMPARE(f.statusOf(QStringLiteral("Take 2.wav")), ProcessingStatus::Kind::Failed);
        QVERIFY(!f.vm().reportError());

        // Retry takes only the failed file; the next completion has no old report error.
        f.vm().exportReport();
        QVERIFY(f.vm().reportError());
        f.vm().retryFailed();
        QVERIFY(!f.vm().reportError());
        QTRY_COMPARE(f.processor->gate.running(), QStringList{QStringLiteral("Take 2.wav")});
        QCOMPARE(f.vm().runTotal(), 1);
        f.processor->gate.release(QStringLiteral("Take 2.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);
        QCOMPARE(f.statusOf(QStringLiteral("Take 2.wav")), ProcessingStatus::Kind::Done);
        QVERIFY(f.vm().failures().isEmpty());
        QCOMPARE(f.statusOf(QStringLiteral("Take 1.wav")), ProcessingStatus::Kind::Done);
    }

    void resultsShowInTheRowsAndTheDetails()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(2));
        QCOMPARE(f.loudnessTextOf(QStringLiteral("Take 1.wav")), QStringLiteral("-20.0 LUFS"));
        QCOMPARE(f.cellOf(QStringLiteral("Take 1.wav"), QueueModel::GainTextRole), QString());
        f.vm().process();
        f.processor->gate.release(QStringLiteral("Take 1.wav"), GatedProcessor::writes());
        f.processor->gate.release(
            QStringLiteral("Take 2.wav"),
            GatedProcessor::fails(ProcessingError::ffmpegFailed(1, QStringLiteral("bad"))));
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        // The stand-in writes -20.0 -> -14.0 LUFS with +6.0 dB, peak -1.0 dBTP.
        QCOMPARE(f.loudnessTextOf(QStringLiteral("Take 1.wav")),
                 QStringLiteral("-20.0 \u2192 -14.0 LUFS"));
        QCOMPARE(f.cellOf(QStringLiteral("Take 1.wav"), QueueModel::GainTextRole),
                 QStringLiteral("+6.0 dB"));
        const ItemDetails written =
            f.vm().itemData(f.idOf(QStringLiteral("Take 1.wav")).toString());
        QCOMPARE(written.input, QStringLiteral("-20.0 LUFS \u00b7 -6.0 dBTP \u00b7 range 5.0 LU"));
        QCOMPARE(written.gain, QStringLiteral("+6.0 dB"));
        QCOMPARE(written.output, QStringLiteral("-14.0 LUFS \u00b7 -1.0 dBTP"));
        QCOMPARE(written.outputPath, f.dir.filePath(QStringLiteral("out/x.wav")));

        // A failed file has its measurement, and nothing written.
        QCOMPARE(f.loudnessTextOf(QStringLiteral("Take 2.wav")), QStringLiteral("-20.0 LUFS"));
        const ItemDetails failed = f.vm().itemData(f.idOf(QStringLiteral("Take 2.wav")).toString());
        QVERIFY(!failed.input.isEmpty());
        QVERIFY(failed.gain.isEmpty() && failed.output.isEmpty() && failed.outputPath.isEmpty());
    }

    void aRunSaysHowItGoes()
    {
        ControllerFixture f;
        f.setOutputFolder();
        f.vm().importPaths(f.numberedFiles(3));
        QCOMPARE(f.vm().windowTitle(),
                 QStringLiteral("Analyzing loudness\u2026 0/3 \u2014 Tonbrook"));
        for (int i = 1; i <= 3; ++i)
            f.analyzer->gate.release(QStringLiteral("Take %1.wav").arg(i),
                                     ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.vm().windowTitle(), QStringLiteral("Tonbrook"));
        QCOMPARE(f.vm().runTimeText(), QString());

        f.vm().process();
        QCOMPARE(f.vm().windowTitle(), QStringLiteral("Processing 0 of 3 \u2014 Tonbrook"));
        QCOMPARE(f.vm().runTimeText(), QStringLiteral("Elapsed 0:00"));
        QVERIFY(!f.vm().stoppingNeedsConfirmation()); // just started
        // Each running file says how far it has come (the stand-in: half-way).
        QTRY_COMPARE(f.cellOf(QStringLiteral("Take 1.wav"), QueueModel::ProgressRole),
                     QStringLiteral("0.5"));
        QTRY_COMPARE(f.vm().runningFiles().size(), 3);
        QCOMPARE(f.vm().runningFiles().first().toMap().value(u"fileName"_qs).toString(),
                 QStringLiteral("Take 1.wav"));
        f.processor->gate.release(
            QStringLiteral("Take 1.wav"),
            GatedProcessor::fails(ProcessingError::ffmpegFailed(1, QStringLiteral("bad"))));
        QTRY_COMPARE(f.vm().failedSoFar(), 1);
        QCOMPARE(f.cellOf(QStringLiteral("Take 1.wav"), QueueModel::ProgressRole),
                 QStringLiteral("-1"));
        QCOMPARE(f.vm().runningFiles().size(), 2); // the failed one is no longer written
        // Once a file is done, the rest is estimated from it.
        QVERIFY2(f.vm().runTimeText().startsWith(u"Elapsed 0:00 \u00b7 about 0:0"),
                 qPrintable(f.vm().runTimeText()));
        QCOMPARE(f.vm().windowTitle(), QStringLiteral("Processing 1 of 3 \u2014 Tonbrook"));
        QVERIFY(f.notifier->notified.isEmpty());
        f.processor->gate.release(QStringLiteral("Take 2.wav"), GatedProcessor::writes());
        f.processor->gate.release(QStringLiteral("Take 3.wav"), GatedProcessor::writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);
        QCOMPARE(
            f.notifier->notified,
            QStringList{QStringLiteral("Processing Complete: 3 files processed \u00b7 1 failed")});
        QCOMPARE(f.vm().windowTitle(), QStringLiteral("Tonbrook"));
    }

    void measuringStartsAgainAfterARun()
    {
        ControllerFixture f;
        f.setOutputFolder();
        f.vm().importPaths(f.numberedFiles(6));
        QTRY_COMPARE(f.analyzer->gate.running().size(), 3);
        f.vm().process();
        QVERIFY(!f.vm().isAnalyzing());
        QVERIFY(f.vm().analyzingIDs().isEmpty());
        QTRY_COMPARE(f.analyzer->gate.cancelled().size(), 3);
        // Never started, and no longer shown as measuring.
        QCOMPARE(f.statusOf(QStringLiteral("Take 6.wav")) == ProcessingStatus::Kind::Analyzing,
                 false);
        QTRY_COMPARE(f.processor->gate.running().size(), 3);
        f.vm().cancelProcessing();

        // A later import, before the stopped jobs have answered, measures
        // again: the new file and those the cancelled run left unmeasured.
        f.vm().importPaths(f.files({QStringLiteral("Late.wav")}));
        QVERIFY(f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisTotal(), 7);
        for (int i = 1; i <= 6; ++i)
            f.analyzer->gate.release(QStringLiteral("Take %1.wav").arg(i),
                                     ControllerFixture::measured());
        f.analyzer->gate.release(QStringLiteral("Late.wav"), ControllerFixture::measured());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QTRY_VERIFY(f.vm().runningFiles().isEmpty()); // every stopped job has answered
        QVERIFY(f.item(QStringLiteral("Late.wav")).measurement);
        QCOMPARE(f.analyzer->gate.cancelled().size(), 3);
        for (const AudioFileItem &item : f.vm().queue())
            QCOMPARE(item.status.kind(), ProcessingStatus::Kind::Ready);
    }

    void destinationsKeepFoldersAndNeverCollide()
    {
        ControllerFixture f;
        f.setOutputFolder();
        f.files({QStringLiteral("x/a/Take.wav"), QStringLiteral("x/b/Take.wav")});
        f.vm().importPaths({f.dir.filePath(QStringLiteral("in/x"))});
        f.vm().importPaths(f.files({QStringLiteral("y/Take.wav"), QStringLiteral("z/Take.wav")}));
        const QList<AudioFileItem> items = f.vm().queue();
        QCOMPARE(items.size(), 4);
        f.vm().process();
        QTRY_COMPARE(f.processor->gate.started().size(), 3);
        const QString out = *f.vm().settings().outputFolder;
        QCOMPARE(f.vm().destinationOf(items[0].id),
                 std::optional(out + QStringLiteral("/a/Take.wav")));
        QCOMPARE(f.vm().destinationOf(items[1].id),
                 std::optional(out + QStringLiteral("/b/Take.wav")));
        QCOMPARE(f.vm().destinationOf(items[2].id),
                 std::optional(out + QStringLiteral("/Take.wav")));
        QCOMPARE(f.vm().destinationOf(items[3].id),
                 std::optional(out + QStringLiteral("/Take 2.wav")));
        f.vm().cancelProcessing();
    }

    void aControllerThatGoesAwayTakesItsJobsWithIt()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(5));
        QTRY_COMPARE(f.analyzer->gate.running().size(), 3);
        f.controller.reset(); // must not wait for answers that never come, nor crash on late ones
        QCOMPARE(f.analyzer->gate.cancelled().size(), 3);
        QCoreApplication::processEvents();
    }
};

QTEST_GUILESS_MAIN(RunOrchestrationTest)
#include "RunOrchestrationTest.moc"

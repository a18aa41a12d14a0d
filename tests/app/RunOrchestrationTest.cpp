// SPDX-License-Identifier: GPL-3.0-or-later
//
// Measuring and processing runs: as many at a time as the services say, results
// by id, progress, cancellation, and what a run leaves behind.
#include "../localization/LanguageFixture.h"
#include "ControllerFixture.h"
#include "localization/L.h"

#include <QTest>

#include <limits>

namespace {

using F = ControllerFixture;
GatedAnalyzer::Answer measures(double loudness = -20.0)
{
    return GatedAnalyzer::measures(loudness);
}

GatedProcessor::Answer writes(ProcessingOutcome outcome = ProcessingOutcome::Success)
{
    return GatedProcessor::writes(outcome);
}

GatedProcessor::Answer failsWith(const QString &standardError)
{
    return GatedProcessor::fails(ProcessingError::ffmpegFailed(1, standardError));
}

} // namespace

class RunOrchestrationTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void init() { m_language.manager().setSelection(AppLanguage::En); }

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
        QTRY_COMPARE(f.analyzer->running().size(), qsizetype(width));
        QTest::qWait(30);
        QCOMPARE(f.analyzer->running().size(), qsizetype(width));
        QVERIFY(f.measureAll());
        f.vm().process();
        QTRY_COMPARE(f.processor->running().size(), qsizetype(width));
        QTest::qWait(30);
        QCOMPARE(f.processor->running().size(), qsizetype(width));
        f.vm().cancelProcessing();
    }

    void measuringShowsWhatRunsAndWhatItFound()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(10));
        QTRY_COMPARE(f.analyzer->running(), F::takes(1, 3));
        // Only what is being measured says so; the rest waits its turn.
        QCOMPARE(f.statuses(), u"aaaqqqqqqq"_qs);
        QCOMPARE(f.vm().statusText(), u"Analyzing loudness\u2026 0/10"_qs);
        QCOMPARE(f.vm().windowTitle(), u"Analyzing loudness\u2026 0/10 \u2014 Tonbrook"_qs);

        f.analyzer->release({F::take(2)}, measures(-18.25));
        QTRY_COMPARE(f.vm().analysisDone(), 1);
        QTRY_COMPARE(f.analyzer->started().size(), 4);
        QCOMPARE(f.analyzer->started().last(), F::take(4));
        QCOMPARE(f.item(F::take(2)).measuredLUFS, std::optional(-18.25));
        QCOMPARE(f.statuses(), u"araaqqqqqq"_qs);
        QCOMPARE(f.vm().statusText(), u"Analyzing loudness\u2026 1/10"_qs);

        // Measured, silent (no loudness to show), unreadable: three different cells.
        f.analyzer->release({F::take(1)}, measures(-std::numeric_limits<double>::infinity()));
        f.analyzer->release({F::take(3)}, std::nullopt);
        f.analyzer->release(F::takes(4, 10), measures());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisDone(), 0);
        QCOMPARE(f.vm().analysisTotal(), 0);
        QCOMPARE(f.statuses(), u"rrrrrrrrrr"_qs);
        QCOMPARE(f.vm().windowTitle(), u"Tonbrook"_qs);
        QCOMPARE(f.cell(F::take(4), QueueModel::LoudnessTextRole), u"-20.0 LUFS"_qs);
        QCOMPARE(f.cell(F::take(1), QueueModel::LoudnessTextRole), u"Silent"_qs);
        QCOMPARE(f.cell(F::take(3), QueueModel::LoudnessTextRole), u"Unreadable"_qs);
        // A file that could not be read is not measured again by itself.
        QVERIFY(!f.vm().hasUnanalyzedFiles());
        f.vm().analyzeQueue();
        QVERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.analyzer->started().size(), 10);
    }

    void batchesOfMeasuringShareOneCount()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(10, u"A"_qs));
        f.analyzer->release({u"A 1.wav"_qs, u"A 2.wav"_qs}, measures());
        QTRY_COMPARE(f.vm().analysisDone(), 2);
        // A second import runs beside the first.
        f.vm().importPaths(f.numberedFiles(2, u"B"_qs));
        QCOMPARE(f.vm().analysisTotal(), 12);
        QTRY_COMPARE(f.analyzer->running(),
                     (QStringList{u"A 3.wav"_qs, u"A 4.wav"_qs, u"A 5.wav"_qs, u"B 1.wav"_qs,
                                  u"B 2.wav"_qs}));

        // A file removed while measured: its answer is dropped, but counted.
        f.vm().removeItem(f.item(u"A 3.wav"_qs).id);
        f.analyzer->release({u"A 3.wav"_qs}, measures(-30.0));
        QTRY_COMPARE(f.vm().analysisDone(), 3);
        QCOMPARE(f.vm().queue().size(), 11);
        for (const AudioFileItem &entry : f.vm().queue())
            QVERIFY(entry.measuredLUFS != -30.0);

        // Clearing stops measuring; the next import starts afresh.
        f.vm().clearQueue();
        QVERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisTotal(), 0);
        QTRY_COMPARE(f.analyzer->cancelled().size(), 5);
        QVERIFY(f.analyzer->running().isEmpty());
        f.vm().importPaths(f.files({u"New.wav"_qs, u"Next.wav"_qs}));
        QCOMPARE(f.vm().analysisTotal(), 2);
        f.analyzer->release({u"New.wav"_qs}, measures());
        QTRY_VERIFY(f.item(u"New.wav"_qs).measurement);
        QCOMPARE(f.analyzer->cancelled().size(), 5);

        // A controller that goes away takes its jobs with it, and waits for no answer.
        f.controller.reset();
        QCOMPARE(f.analyzer->cancelled().size(), 6);
        QCoreApplication::processEvents();
    }

    void aRunWritesThreeAtATimeAndSaysHowItGoes()
    {
        ControllerFixture f;
        const auto writing = [&f] {
            QStringList names;
            for (const QVariant &file : f.vm().runningFiles())
                names.append(file.toMap().value(u"fileName"_qs).toString());
            return names;
        };
        f.setOutputFolder();
        QVERIFY(f.importMeasured(5));
        QCOMPARE(f.cell(F::take(1), QueueModel::GainTextRole), QString());
        QCOMPARE(f.vm().runTimeText(), QString());

        f.vm().process();
        QCOMPARE(f.vm().screenState(), AppScreenState::Processing);
        QCOMPARE(f.vm().windowTitle(), u"Processing 0 of 5 \u2014 Tonbrook"_qs);
        QCOMPARE(f.vm().runTimeText(), u"Elapsed 0:00"_qs);
        QVERIFY(!f.vm().stoppingNeedsConfirmation()); // just started
        QTRY_COMPARE(f.processor->running(), F::takes(1, 3));
        QCOMPARE(f.statuses(), u"ppprr"_qs);
        QVERIFY(!f.vm().currentFileName());
        f.vm().process(); // ignored while a run is on screen
        // Each running file says how far it has come (the stand-in: half-way).
        QTRY_COMPARE(f.cell(F::take(1), QueueModel::ProgressRole), u"0.5"_qs);
        QTRY_COMPARE(writing(), F::takes(1, 3));

        f.processor->release({F::take(2)}, writes());
        QTRY_COMPARE(f.vm().processedCount(), 1);
        QCOMPARE(f.vm().currentFileName(), std::optional(F::take(1)));
        QTRY_COMPARE(f.processor->started().last(), F::take(4));
        QCOMPARE(f.cell(F::take(2), QueueModel::ProgressRole), u"-1"_qs);
        QTRY_COMPARE(writing(), (QStringList{F::take(1), F::take(3), F::take(4)}));
        QCOMPARE(f.vm().statusText(), u"Processing 1 of 5"_qs);
        QCOMPARE(f.vm().windowTitle(), u"Processing 1 of 5 \u2014 Tonbrook"_qs);
        // Once a file is done, the rest is estimated from it.
        QVERIFY2(f.vm().runTimeText().startsWith(u"Elapsed 0:00 \u00b7 about 0:0"),
                 qPrintable(f.vm().runTimeText()));

        f.processor->release({F::take(3)}, failsWith(u"No space left on device"_qs));
        QTRY_COMPARE(f.vm().failedSoFar(), 1);
        QTRY_COMPARE(writing(), (QStringList{F::take(1), F::take(4), F::take(5)}));
        QVERIFY(f.notifier->notified.isEmpty());
        f.processor->release({F::take(1)}, writes(ProcessingOutcome::PeakLimited));
        f.processor->release(F::takes(4, 5), writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        QCOMPARE(f.vm().completionSummary(), std::optional(CompletionSummary{5, 3, 1, 1, true}));
        QCOMPARE(f.statuses(), u"wdfdd"_qs);
        QCOMPARE(f.item(F::take(1)).status,
                 ProcessingStatus::warning(u"Target -20.00 \u2192 held back"_qs));
        const AudioFileItem failed = f.item(F::take(3));
        QCOMPARE(failed.status.message(), L::text(L::DiskFullMessage, F::take(3)));
        QCOMPARE(failed.errorDetails,
                 std::optional(u"ffmpeg exit code 1\n\nNo space left on device"_qs));
        QCOMPARE(failed.result->outcome, ProcessingOutcome::Failed);
        QCOMPARE(f.revealer->revealed, QStringList{*f.vm().settings().outputFolder});
        QCOMPARE(f.notifier->notified,
                 QStringList{u"Processing Complete: 5 files processed \u00b7 1 failed"_qs});
        QCOMPARE(f.vm().statusText(), u"Complete"_qs);
        QCOMPARE(f.vm().windowTitle(), u"Tonbrook"_qs);

        // A written file's row and details: -20.0 -> -14.0 LUFS with +6.0 dB, peak -1.0 dBTP.
        QCOMPARE(f.cell(F::take(2), QueueModel::LoudnessTextRole), u"-20.0 \u2192 -14.0 LUFS"_qs);
        QCOMPARE(f.cell(F::take(2), QueueModel::GainTextRole), u"+6.0 dB"_qs);
        const ItemDetails written = f.vm().itemData(f.item(F::take(2)).id.toString());
        QCOMPARE(written.input, u"-20.0 LUFS \u00b7 -6.0 dBTP \u00b7 range 5.0 LU"_qs);
        QCOMPARE(written.gain, u"+6.0 dB"_qs);
        QCOMPARE(written.output, u"-14.0 LUFS \u00b7 -1.0 dBTP"_qs);
        QCOMPARE(written.outputPath, f.dir.filePath(u"out/x.wav"_qs));
        // A failed file keeps its measurement, and has nothing written.
        QCOMPARE(f.cell(F::take(3), QueueModel::LoudnessTextRole), u"-20.0 LUFS"_qs);
        const ItemDetails notWritten = f.vm().itemData(failed.id.toString());
        QCOMPARE(notWritten.input, written.input);
        QVERIFY(notWritten.gain.isEmpty() && notWritten.output.isEmpty());
        QVERIFY(notWritten.outputPath.isEmpty());
    }

    void aSelectionRunsAloneAndProgressCountsTheWholeQueue()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(5));
        f.vm().toggleSelection(f.item(F::take(4)).id);
        f.vm().toggleSelection(f.item(F::take(2)).id);
        QCOMPARE(f.vm().processButtonTitle(), u"Process Selected (2)"_qs);
        f.vm().process();
        QTRY_COMPARE(f.processor->running(), (QStringList{F::take(2), F::take(4)}));
        f.processor->release({F::take(2)}, writes());
        QTRY_COMPARE(f.vm().statusText(), u"Processing 1 of 5"_qs);
        f.processor->release({F::take(4)}, writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);
        QCOMPARE(f.vm().completionSummary()->totalProcessed, 2);
        QCOMPARE(f.statuses(), u"rdrdr"_qs);
        QVERIFY(!f.item(F::take(1)).result);
    }

    void cancellingNeverReadsAsFailure()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(5));
        f.vm().process();
        QTRY_COMPARE(f.processor->running().size(), 3);
        f.vm().cancelProcessing();
        // One of the three fails because it was stopped: still a cancellation.
        f.processor->release({F::take(3)}, failsWith(u"Exiting normally"_qs));
        QCOMPARE(f.vm().screenState(), AppScreenState::Idle);
        QTRY_COMPARE(f.statuses(), u"cccrr"_qs);
        QCOMPARE(f.vm().failedSoFar(), 0);
        QVERIFY(f.processor->running().isEmpty());
        QCOMPARE(f.processor->started().size(), 3);
        QVERIFY(!f.vm().completionSummary());
        QVERIFY(f.revealer->revealed.isEmpty());
        QVERIFY(f.notifier->notified.isEmpty());

        // The next run has a token of its own.
        f.vm().process();
        QTRY_COMPARE(f.processor->running().size(), 3);
        QCOMPARE(f.vm().screenState(), AppScreenState::Processing);
        f.vm().cancelProcessing();
    }

    void afterARunBackRetryReportAndMore()
    {
        ControllerFixture f;
        const auto failedNames = [&f] {
            QStringList names;
            for (const QVariant &failure : f.vm().failures())
                names.append(failure.toMap().value(u"fileName"_qs).toString());
            return names;
        };
        f.setOutputFolder();
        QVERIFY(f.importMeasured(3));
        f.vm().exportReport(); // no results yet: nothing is asked
        QCOMPARE(f.panels->saveRequests, 0);
        f.vm().process();
        f.processor->release({F::take(1)}, writes());
        f.processor->release({F::take(2)}, GatedProcessor::fails(ProcessingError::sourceMissing(
                                               f.dir.filePath(u"in/Take 2.wav"_qs))));
        f.processor->release({F::take(3)}, failsWith(u"bad"_qs));
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        // The completion screen names each failure and why.
        QCOMPARE(failedNames(), F::takes(2, 3));
        QVERIFY(f.vm()
                    .failures()
                    .first()
                    .toMap()
                    .value(u"message"_qs)
                    .toString()
                    .contains(u"moved or deleted"));

        // The report is proposed in the output folder; a cancelled dialog is no error.
        f.vm().exportReport();
        QCOMPARE(f.panels->saveRequests, 1);
        QCOMPARE(f.panels->proposedName, f.dir.filePath(u"out/Tonbrook Report.csv"_qs));
        QCOMPARE(f.vm().reportError(), std::nullopt);
        f.panels->savePath = f.dir.filePath(u"report.csv"_qs);
        f.vm().exportReport();
        QCOMPARE(f.vm().reportError(), std::nullopt);
        QFile report(*f.panels->savePath);
        QVERIFY(report.open(QIODevice::ReadOnly));
        QCOMPARE(report.readAll().count("\r\n"), 4);
        f.panels->savePath = f.dir.filePath(u"no such folder/report.csv"_qs);
        f.vm().exportReport();
        QVERIFY(f.vm().reportError()->startsWith(u"Could not save the report: "));

        // Back to the queue: every row keeps its result, the report error goes;
        // more files are measured, and what was processed keeps its outcome.
        f.vm().backToQueue();
        QCOMPARE(f.vm().screenState(), AppScreenState::Idle);
        QVERIFY(!f.vm().reportError());
        f.vm().importPaths(f.files({u"Late.wav"_qs}));
        QTRY_COMPARE(f.analyzer->running(), QStringList{u"Late.wav"_qs});
        QCOMPARE(f.statuses(), u"dffa"_qs);
        f.analyzer->release({u"Late.wav"_qs}, measures());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.statuses(), u"dffr"_qs);

        // Retry takes only the failed files; the next completion has no old report error.
        f.vm().exportReport();
        QVERIFY(f.vm().reportError());
        f.vm().retryFailed();
        QVERIFY(!f.vm().reportError());
        QTRY_COMPARE(f.processor->running(), F::takes(2, 3));
        QCOMPARE(f.vm().runTotal(), 2);
        f.processor->release({F::take(2)}, writes());
        f.processor->release({F::take(3)}, failsWith(u"bad"_qs));
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);
        QCOMPARE(f.statuses(), u"ddfr"_qs);
        QCOMPARE(failedNames(), QStringList{F::take(3)});

        f.vm().startNewBatch();
        QCOMPARE(f.vm().screenState(), AppScreenState::Idle);
        QVERIFY(f.vm().queue().isEmpty());
        QVERIFY(!f.vm().completionSummary());
    }

    void measuringStartsAgainAfterARun()
    {
        ControllerFixture f;
        f.setOutputFolder();
        f.vm().importPaths(f.numberedFiles(6));
        QTRY_COMPARE(f.analyzer->running().size(), 3);
        f.vm().process();
        QVERIFY(!f.vm().isAnalyzing());
        QVERIFY(f.vm().analyzingIDs().isEmpty());
        QTRY_COMPARE(f.analyzer->cancelled().size(), 3);
        // Never started, and no longer shown as measuring.
        QCOMPARE(f.item(F::take(6)).status.kind() == ProcessingStatus::Kind::Analyzing, false);
        QTRY_COMPARE(f.processor->running().size(), 3);
        QCOMPARE(f.statuses(), u"ppprrr"_qs); // the stopped measuring's late answers change none
        f.vm().cancelProcessing();

        // A later import, before the stopped jobs have answered, measures
        // again: the new file and those the cancelled run left unmeasured.
        f.vm().importPaths(f.files({u"Late.wav"_qs}));
        QVERIFY(f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisTotal(), 7);
        f.analyzer->release(F::takes(1, 6) << u"Late.wav"_qs, measures());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QTRY_VERIFY(f.vm().runningFiles().isEmpty()); // every stopped job has answered
        QVERIFY(f.item(u"Late.wav"_qs).measurement);
        QCOMPARE(f.analyzer->cancelled().size(), 3);
        QCOMPARE(f.statuses(), u"rrrrrrr"_qs);
    }

    void destinationsKeepFoldersAndNeverCollide()
    {
        ControllerFixture f;
        f.setOutputFolder();
        f.files({u"x/a/Take.wav"_qs, u"x/b/Take.wav"_qs});
        f.vm().importPaths({f.dir.filePath(u"in/x"_qs)});
        f.vm().importPaths(f.files({u"y/Take.wav"_qs, u"z/Take.wav"_qs}));
        f.vm().process();
        QTRY_COMPARE(f.processor->started().size(), 3);
        QStringList destinations;
        for (const AudioFileItem &entry : f.vm().queue())
            destinations.append(f.vm().destinationOf(entry.id)->mid(f.dir.path().size()));
        QCOMPARE(destinations, (QStringList{u"/out/a/Take.wav"_qs, u"/out/b/Take.wav"_qs,
                                            u"/out/Take.wav"_qs, u"/out/Take 2.wav"_qs}));
        f.vm().cancelProcessing();
    }
};

QTEST_GUILESS_MAIN(RunOrchestrationTest)
#include "RunOrchestrationTest.moc"

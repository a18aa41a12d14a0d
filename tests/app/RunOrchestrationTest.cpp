// SPDX-License-Identifier: GPL-3.0-or-later
//
// Measuring and processing runs: as many at a time as the services say, results
// by id, what each way a job can end makes of its file, cancellation, and what a
// run leaves behind.
#include "../localization/LanguageFixture.h"
#include "ControllerFixture.h"
#include "engine/FFmpegError.h"
#include "localization/L.h"

#include <QTest>

#include <atomic>
#include <limits>
#include <thread>

namespace {

using F = ControllerFixture;
using A = GatedAnalyzer;
using P = GatedProcessor;

P::Answer failsWith(const QString &standardError)
{
    return P::fails(ProcessingError::ffmpegFailed(1, standardError));
}

// Takes its answer at once, but gives it only once `open` is set.
P::Answer heldUntil(const std::atomic<bool> &open, const P::Answer &answer)
{
    return [&open, answer] {
        while (!open)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return answer();
    };
}

QStringList fileNames(const QVariantList &entries)
{
    QStringList names;
    for (const QVariant &entry : entries)
        names.append(entry.toMap().value(u"fileName"_qs).toString());
    return names;
}

} // namespace

class RunOrchestrationTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void measuringShowsWhatRunsAndWhatItFound()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(10));
        QTRY_COMPARE(f.analyzer->running(), F::takes(1, 3));
        // Only what is being measured says so; the rest waits its turn.
        QCOMPARE(f.statuses(), u"aaaqqqqqqq"_qs);
        QCOMPARE(f.vm().windowTitle(), u"Analyzing loudness\u2026 0/10 \u2014 Tonbrook"_qs);

        f.analyzer->release({F::take(2)}, A::measures(-18.25));
        QTRY_COMPARE(f.analyzer->started().size(), 4);
        QCOMPARE(f.analyzer->started().last(), F::take(4));
        QCOMPARE(f.item(F::take(2)).measuredLUFS, std::optional(-18.25));
        QCOMPARE(f.statuses(), u"araaqqqqqq"_qs);
        QCOMPARE(f.vm().statusText(), u"Analyzing loudness\u2026 1/10"_qs);

        // Measured, silent (no loudness to show), unreadable: three different cells.
        f.analyzer->release({F::take(1)}, A::measures(-std::numeric_limits<double>::infinity()));
        f.analyzer->release({F::take(3)}, std::nullopt);
        f.analyzer->release(F::takes(4, 10), A::measures());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.vm().analysisTotal(), 0);
        QCOMPARE(f.statuses(), u"rrrrrrrrrr"_qs);
        QCOMPARE(f.vm().windowTitle(), u"Tonbrook"_qs);
        QCOMPARE(f.cell(F::take(4), QueueModel::LoudnessTextRole), u"-20.0 LUFS"_qs);
        QCOMPARE(f.cell(F::take(1), QueueModel::LoudnessTextRole), u"Silent"_qs);
        QCOMPARE(f.cell(F::take(3), QueueModel::LoudnessTextRole), u"Unreadable"_qs);
        // A file that could not be read is not measured again by itself.
        f.vm().analyzeQueue();
        QVERIFY(!f.vm().isAnalyzing());
        QCOMPARE(f.analyzer->started().size(), 10);
    }

    void batchesOfMeasuringShareOneCount()
    {
        ControllerFixture f;
        f.vm().importPaths(f.numberedFiles(10));
        f.analyzer->release(F::takes(1, 2), A::measures());
        QTRY_COMPARE(f.vm().analysisDone(), 2);
        // A second import runs beside the first.
        f.vm().importPaths(f.files({u"B 1.wav"_qs, u"B 2.wav"_qs}));
        QCOMPARE(f.vm().analysisTotal(), 12);
        QTRY_COMPARE(f.analyzer->running(),
                     QStringList({u"B 1.wav"_qs, u"B 2.wav"_qs}) + F::takes(3, 5));

        // A file removed while measured: its answer is dropped, but counted.
        f.vm().removeItem(f.item(F::take(3)).id);
        f.analyzer->release({F::take(3)}, A::measures(-30.0));
        QTRY_COMPARE(f.vm().analysisDone(), 3);
        for (const AudioFileItem &entry : f.vm().queue())
            QVERIFY(entry.measuredLUFS != -30.0);

        // Clearing stops measuring; the next import starts afresh.
        f.vm().clearQueue();
        QVERIFY(!f.vm().isAnalyzing());
        QTRY_COMPARE(f.analyzer->cancelled().size(), 5);
        f.vm().importPaths(f.files({u"New.wav"_qs, u"Next.wav"_qs}));
        QCOMPARE(f.vm().analysisTotal(), 2);
        f.analyzer->release({u"New.wav"_qs}, A::measures());
        QTRY_VERIFY(f.item(u"New.wav"_qs).measurement);
        QCOMPARE(f.analyzer->cancelled().size(), 5);

        // A controller that goes away takes its jobs with it, and waits for no answer.
        f.controller.reset();
        QCOMPARE(f.analyzer->cancelled().size(), 6);
    }

    // Six files measured at -21 LUFS, written with a prefix, each job ending its own way.
    void aRunWritesThreeAtATimeAndSaysHowItGoes()
    {
        ControllerFixture f;
        f.setOutputFolder();
        ProcessingSettings settings = f.vm().settings();
        settings.addPrefix = true;
        f.vm().setSettings(settings);
        f.vm().importPaths(f.numberedFiles(6));
        f.analyzer->release(F::takes(1, 6), A::measures(-21));
        QTRY_VERIFY(!f.vm().isAnalyzing());

        f.vm().process();
        QCOMPARE(f.vm().runTimeText(), u"Elapsed 0:00"_qs);
        QTRY_COMPARE(f.processor->running(), F::takes(1, 3));
        QCOMPARE(f.statuses(), u"ppprrr"_qs);
        f.vm().process(); // ignored while a run is on screen
        // Each running file says how far it has come (the stand-in: half-way).
        QTRY_COMPARE(f.cell(F::take(1), QueueModel::ProgressRole), u"0.5"_qs);
        QTRY_COMPARE(fileNames(f.vm().runningFiles()), F::takes(1, 3));

        f.processor->release({F::take(2)}, P::writes());
        QTRY_COMPARE(f.vm().processedCount(), 1);
        QCOMPARE(f.vm().currentFileName(), std::optional(F::take(1)));
        QTRY_COMPARE(f.processor->started().last(), F::take(4));
        QCOMPARE(f.cell(F::take(2), QueueModel::ProgressRole), u"-1"_qs);
        QTRY_COMPARE(fileNames(f.vm().runningFiles()),
                     (QStringList{F::take(1), F::take(3), F::take(4)}));
        // Once a file is done, the rest is estimated from it.
        QVERIFY2(f.vm().runTimeText().startsWith(u"Elapsed 0:00 \u00b7 about 0:0"),
                 qPrintable(f.vm().runTimeText()));

        f.processor->release({F::take(3)}, failsWith(u"No space left on device"_qs));
        QTRY_COMPARE(f.vm().failedSoFar(), 1);
        QVERIFY(f.notifier->notified.isEmpty());
        f.processor->release({F::take(1)}, P::writes(ProcessingOutcome::PeakLimited));
        f.processor->release({F::take(4)}, P::writes(ProcessingOutcome::Clipped));
        f.processor->release({F::take(5)}, P::fails(FFmpegError::timedOut(23)));
        f.processor->release({F::take(6)}, P::fails(ProcessingError::cancelled()));
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        // A file the service cancelled by itself is neither processed nor failed.
        QCOMPARE(f.statuses(), u"wdfwfc"_qs);
        QCOMPARE(f.vm().completionSummary(), std::optional(CompletionSummary{5, 2, 1, 2, true}));
        QCOMPARE(f.notifier->notified,
                 QStringList{u"Processing Complete: 5 files processed \u00b7 2 failed"_qs});
        QCOMPARE(f.revealer->revealed, QStringList{*f.vm().settings().outputFolder});
        QCOMPARE(f.vm().statusText(), u"Complete"_qs);
        QCOMPARE(f.vm().windowTitle(), u"Tonbrook"_qs);
        QCOMPARE(f.item(F::take(1)).status.message(), u"Target -20.00 \u2192 held"_qs);
        QCOMPARE(f.item(F::take(4)).status.message(), u"Clipped"_qs);
        QCOMPARE(f.item(F::take(5)).status.message(), L::text(L::TookTooLongMessage, F::take(5)));
        const AudioFileItem failed = f.item(F::take(3));
        QCOMPARE(failed.status.message(), L::text(L::DiskFullMessage, F::take(3)));
        QCOMPARE(failed.errorDetails,
                 std::optional(u"ffmpeg exit code 1\n\nNo space left on device"_qs));
        // A failed or cancelled file's record names the file it was to write.
        QCOMPARE(failed.result->outcome, ProcessingOutcome::Failed);
        QCOMPARE(failed.result->sourceFileName, F::take(3));
        QCOMPARE(failed.result->outputFileName, u"LUFS_Take 3.wav"_qs);
        QCOMPARE(f.item(F::take(6)).result->outcome, ProcessingOutcome::Cancelled);

        // A written file's row and details take the figures the run measured: the
        // stand-in writes from -20.0 to -14.0 LUFS with +6.0 dB, peak -1.0 dBTP.
        QCOMPARE(f.cell(F::take(2), QueueModel::LoudnessTextRole), u"-20.0 \u2192 -14.0 LUFS"_qs);
        QCOMPARE(f.cell(F::take(2), QueueModel::GainTextRole), u"+6.0 dB"_qs);
        const ItemDetails written = f.vm().itemData(f.item(F::take(2)).id.toString());
        QCOMPARE(written.input, u"-20.0 LUFS \u00b7 -6.0 dBTP \u00b7 range 5.0 LU"_qs);
        QCOMPARE(written.gain, u"+6.0 dB"_qs);
        QCOMPARE(written.output, u"-14.0 LUFS \u00b7 -1.0 dBTP"_qs);
        QCOMPARE(written.outputPath, f.dir.filePath(u"out/x.wav"_qs));
        // A failed file keeps its own measurement, and has nothing written.
        QCOMPARE(f.cell(F::take(3), QueueModel::GainTextRole), QString());
        const ItemDetails notWritten = f.vm().itemData(failed.id.toString());
        QCOMPARE(notWritten.input, u"-21.0 LUFS \u00b7 -6.0 dBTP \u00b7 range 5.0 LU"_qs);
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
        f.processor->release({F::take(2)}, P::writes());
        QTRY_COMPARE(f.vm().statusText(), u"Processing 1 of 5"_qs);
        f.processor->release({F::take(4)}, P::writes());
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);
        QCOMPARE(f.vm().completionSummary()->totalProcessed, 2);
        QCOMPARE(f.statuses(), u"rdrdr"_qs);
        QVERIFY(!f.item(F::take(1)).result);
    }

    // Once the user has stopped a run, a job that fails reads as cancelled, one
    // that wrote its file keeps it, and one that cannot start ffmpeg at all still
    // stops the program from trying again.
    void cancellingNeverReadsAsFailure()
    {
        std::atomic<bool> stopped = false;
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(5));
        f.vm().process();
        f.processor->release({F::take(1)}, heldUntil(stopped, P::writes()));
        f.processor->release({F::take(3)}, heldUntil(stopped, failsWith(u"Exiting normally"_qs)));
        QTRY_COMPARE(f.processor->running(), QStringList{F::take(2)});
        f.vm().cancelProcessing();
        stopped = true;
        QCOMPARE(f.vm().screenState(), AppScreenState::Idle);
        QTRY_COMPARE(f.statuses(), u"dccrr"_qs);
        QCOMPARE(f.vm().failedSoFar(), 0);
        QCOMPARE(f.processor->started().size(), 3);
        QVERIFY(!f.vm().completionSummary());
        QVERIFY(f.revealer->revealed.isEmpty());
        QVERIFY(f.notifier->notified.isEmpty());

        // The next run has a token of its own.
        stopped = false;
        f.vm().process();
        f.processor->release({F::take(2)},
                             heldUntil(stopped, P::fails(FFmpegError::launchFailed(u"x"_qs))));
        QTRY_COMPARE(f.processor->running(), (QStringList{F::take(1), F::take(3)}));
        QCOMPARE(f.vm().screenState(), AppScreenState::Processing);
        f.vm().cancelProcessing();
        stopped = true;
        QTRY_COMPARE(f.statuses(), u"crcrr"_qs);
        QVERIFY(f.vm().installationProblem());
        QVERIFY(!f.vm().canProcess());
    }

    // A controller that goes away mid-run stops its jobs instead of waiting for them:
    // were they not stopped, only the late answer would end them.
    void aControllerGoingAwayStopsItsRun()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(2));
        f.vm().process();
        QTRY_COMPARE(f.processor->running(), F::takes(1, 2));
        std::thread late([&f] {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            f.processor->release(F::takes(1, 2), P::writes());
        });
        f.controller.reset();
        late.join();
        QStringList cancelled = f.processor->cancelled();
        cancelled.sort();
        QCOMPARE(cancelled, F::takes(1, 2));
    }

    void afterARunBackRetryReportAndMore()
    {
        ControllerFixture f;
        f.setOutputFolder();
        QVERIFY(f.importMeasured(3));
        f.vm().exportReport(); // no results yet: nothing is asked
        QCOMPARE(f.panels->saveRequests, 0);
        f.vm().process();
        f.processor->release({F::take(1)}, P::writes());
        f.processor->release({F::take(2)}, P::fails(ProcessingError::sourceMissing(
                                               f.dir.filePath(u"in/Take 2.wav"_qs))));
        f.processor->release({F::take(3)}, P::fails(42));
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);

        // The completion screen names each failure and why.
        QCOMPARE(fileNames(f.vm().failures()), F::takes(2, 3));
        const QString why = f.vm().failures().first().toMap().value(u"message"_qs).toString();
        QVERIFY2(why.contains(u"moved or deleted"), qPrintable(why));
        QCOMPARE(f.item(F::take(3)).status.message(), L::text(L::DamagedMessage, F::take(3)));

        // The report is proposed in the output folder; a cancelled dialog is no error.
        f.vm().exportReport();
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
        QVERIFY(!f.vm().reportError());
        f.vm().importPaths(f.files({u"Late.wav"_qs}));
        QTRY_COMPARE(f.statuses(), u"dffa"_qs);

        // Retry takes only the failed files; the next completion has no old report error.
        f.vm().exportReport();
        QVERIFY(f.vm().reportError());
        f.vm().retryFailed();
        QVERIFY(!f.vm().reportError());
        QTRY_COMPARE(f.processor->running(), F::takes(2, 3));
        QCOMPARE(f.vm().runTotal(), 2);
        f.processor->release({F::take(2)}, P::writes());
        f.processor->release({F::take(3)}, P::fails(42));
        QTRY_COMPARE(f.vm().screenState(), AppScreenState::Completed);
        QCOMPARE(f.statuses(), u"ddfr"_qs);
        QCOMPARE(fileNames(f.vm().failures()), QStringList{F::take(3)});
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
        QTRY_COMPARE(f.processor->running().size(), 3);
        // Never started files are no longer shown as measuring, and the stopped
        // measuring's late answers change none.
        QCOMPARE(f.statuses(), u"ppprrr"_qs);
        f.vm().cancelProcessing();

        // A later import, before the stopped jobs have answered, measures
        // again: the new file and those the cancelled run left unmeasured.
        f.vm().importPaths(f.files({u"Late.wav"_qs}));
        QCOMPARE(f.vm().analysisTotal(), 7);
        f.analyzer->release(F::takes(1, 6) << u"Late.wav"_qs, A::measures());
        QTRY_VERIFY(!f.vm().isAnalyzing());
        QTRY_VERIFY(f.vm().runningFiles().isEmpty()); // every stopped job has answered
        QCOMPARE(f.analyzer->cancelled().size(), 3);
        QCOMPARE(f.statuses(), u"rrrrrrr"_qs);
    }

    // Five jobs at a time, as the services say: all four files measured and written at once.
    void destinationsKeepFoldersAndNeverCollide()
    {
        ControllerFixture f(5);
        f.setOutputFolder();
        f.files({u"x/a/Take.wav"_qs, u"x/b/Take.wav"_qs});
        f.vm().importPaths(QStringList{f.dir.filePath(u"in/x"_qs)} +
                           f.files({u"y/Take.wav"_qs, u"z/Take.wav"_qs}));
        QTRY_COMPARE(f.analyzer->started().size(), 4);
        f.vm().process();
        QTRY_COMPARE(f.processor->started().size(), 4);
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

// SPDX-License-Identifier: GPL-3.0-or-later
// What a processing job's end makes of its queue item: no threads, no ffmpeg,
// just the job's answer (or what it threw) and whether the user had cancelled.
#include "app/JobOutcome.h"

#include "engine/FFmpegError.h"
#include "engine/ProcessingError.h"
#include "localization/L.h"

#include <QTest>

#include <stdexcept>

namespace {

using Job = std::function<ProcessingResult()>;

const QString name = QStringLiteral("Kick \u201cA\u201d.wav");

Job writes(ProcessingOutcome outcome, std::optional<QString> warning = std::nullopt)
{
    return [=] {
        ProcessingResult result;
        result.sourceFileName = name;
        result.outputFileName = QStringLiteral("Kick.wav");
        result.originalLUFS = -21.5;
        result.outcome = outcome;
        result.warningMessage = warning;
        return result;
    };
}

template<typename Error>
Job throws(Error error)
{
    return [error]() -> ProcessingResult { throw error; };
}

} // namespace

Q_DECLARE_METATYPE(Job)

class JobOutcomeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itemChange_data()
    {
        QTest::addColumn<Job>("job");
        QTest::addColumn<bool>("cancelled");
        QTest::addColumn<ProcessingStatus>("status");
        // The record's outcome; Success also stands for "the job's own result".
        QTest::addColumn<std::optional<ProcessingOutcome>>("recorded");
        QTest::addColumn<bool>("installationFault");

        const QString held = QStringLiteral("Held back to -1.0 dBTP");
        QTest::newRow("written") << writes(ProcessingOutcome::Success) << false
                                 << ProcessingStatus::done()
                                 << std::optional(ProcessingOutcome::Success) << false;
        QTest::newRow("written after cancel stays written")
            << writes(ProcessingOutcome::Success) << true << ProcessingStatus::done()
            << std::optional(ProcessingOutcome::Success) << false;
        QTest::newRow("peak limited warns with its message")
            << writes(ProcessingOutcome::PeakLimited, held) << false
            << ProcessingStatus::warning(held) << std::optional(ProcessingOutcome::PeakLimited)
            << false;
        QTest::newRow("clipped without a message warns by name")
            << writes(ProcessingOutcome::Clipped) << false
            << ProcessingStatus::warning(QStringLiteral("Clipped"))
            << std::optional(ProcessingOutcome::Clipped) << false;
        QTest::newRow("cancelled by the service")
            << throws(ProcessingError::cancelled()) << false << ProcessingStatus::cancelled()
            << std::optional(ProcessingOutcome::Cancelled) << false;
        QTest::newRow("failure after the user cancelled is a cancellation")
            << throws(ProcessingError::ffmpegFailed(255, QStringLiteral("Exiting normally")))
            << true << ProcessingStatus::cancelled() << std::optional(ProcessingOutcome::Cancelled)
            << false;
        QTest::newRow("source gone")
            << throws(ProcessingError::sourceMissing(QStringLiteral("/in/Kick.wav"))) << false
            << ProcessingStatus::failed(L::text(L::SourceMissingMessage, name))
            << std::optional(ProcessingOutcome::Failed) << false;
        QTest::newRow("ffmpeg took too long: the file's fault")
            << throws(FFmpegError::timedOut(23)) << false
            << ProcessingStatus::failed(L::text(L::TookTooLongMessage, name))
            << std::optional(ProcessingOutcome::Failed) << false;
        QTest::newRow("anything else reads as damaged")
            << Job([]() -> ProcessingResult { throw 42; }) << false
            << ProcessingStatus::failed(L::text(L::DamagedMessage, name))
            << std::optional(ProcessingOutcome::Failed) << false;
        QTest::newRow("ffmpeg missing: back to ready, the installation at fault")
            << throws(FFmpegError::binaryNotFound()) << false << ProcessingStatus::ready()
            << std::optional<ProcessingOutcome>() << true;
        QTest::newRow("ffmpeg cannot start, even after cancel")
            << throws(FFmpegError::launchFailed(QStringLiteral("Permission denied"))) << true
            << ProcessingStatus::ready() << std::optional<ProcessingOutcome>() << true;
    }

    void itemChange()
    {
        QFETCH(Job, job);
        QFETCH(bool, cancelled);
        QFETCH(ProcessingStatus, status);
        QFETCH(std::optional<ProcessingOutcome>, recorded);
        QFETCH(bool, installationFault);

        const QString destination = QStringLiteral("/out/LUFS_Kick.wav");
        const ItemChange change =
            JobOutcome::itemChange(JobOutcome::run(job, name), cancelled, name, destination);
        QCOMPARE(change.status, status);
        QCOMPARE(change.installationFault.has_value(), installationFault);
        QCOMPARE(change.result.has_value(), recorded.has_value());
        if (!change.result)
            return;
        QCOMPARE(change.result->outcome, *recorded);
        QCOMPARE(change.result->sourceFileName, name);
        const bool ownResult =
            *recorded != ProcessingOutcome::Cancelled && *recorded != ProcessingOutcome::Failed;
        // A record made for a job without a result names the file it was to write.
        QCOMPARE(change.result->outputFileName,
                 ownResult ? QStringLiteral("Kick.wav") : QStringLiteral("LUFS_Kick.wav"));
        QCOMPARE(change.measuredLUFS, ownResult ? std::optional(-21.5) : std::nullopt);
    }

    void failuresKeepTheirDetails()
    {
        const ItemChange change = JobOutcome::itemChange(
            JobOutcome::run(throws(ProcessingError::ffmpegFailed(1, QStringLiteral("moov atom "
                                                                                   "not found"))),
                            name),
            false, name, QStringLiteral("/out/x.wav"));
        QCOMPARE(change.status.kind(), ProcessingStatus::Kind::Failed);
        QVERIFY(change.errorDetails);
        QVERIFY2(change.errorDetails->contains(u"moov atom not found"),
                 qPrintable(*change.errorDetails));
    }
};

QTEST_GUILESS_MAIN(JobOutcomeTest)
#include "JobOutcomeTest.moc"

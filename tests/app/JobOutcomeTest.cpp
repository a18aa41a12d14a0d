// SPDX-License-Identifier: GPL-3.0-or-later
// What a processing job's end makes of its queue item: no threads, no ffmpeg,
// just the job's answer (or what it threw) and whether the user had cancelled.
#include "app/JobOutcome.h"

#include "engine/FFmpegError.h"
#include "engine/ProcessingError.h"
#include "localization/L.h"

#include <QTest>

namespace {

using Job = std::function<ProcessingResult()>;
using Outcome = ProcessingOutcome;

const QString name = QStringLiteral("Kick \u201cA\u201d.wav");

Job writes(Outcome outcome, std::optional<QString> warning = std::nullopt)
{
    return [=] {
        return ProcessingResult{.sourceFileName = name,
                                .outputFileName = QStringLiteral("Kick.wav"),
                                .originalLUFS = -21.5,
                                .outcome = outcome,
                                .warningMessage = warning};
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
    // `recorded`: the item's result; none when the installation, not the file, is at fault.
    void itemChange_data()
    {
        QTest::addColumn<Job>("job");
        QTest::addColumn<bool>("cancelled");
        QTest::addColumn<ProcessingStatus>("status");
        QTest::addColumn<std::optional<Outcome>>("recorded");
        const QString held = QStringLiteral("Held back to -1.0 dBTP");
        const auto failed = [](L::Text message) {
            return ProcessingStatus::failed(L::text(message, name));
        };
        QTest::newRow("written") << writes(Outcome::Success) << false << ProcessingStatus::done()
                                 << std::optional(Outcome::Success);
        QTest::newRow("written after cancel stays written")
            << writes(Outcome::Success) << true << ProcessingStatus::done()
            << std::optional(Outcome::Success);
        QTest::newRow("peak limited warns with its message")
            << writes(Outcome::PeakLimited, held) << false << ProcessingStatus::warning(held)
            << std::optional(Outcome::PeakLimited);
        QTest::newRow("clipped without a message warns by name")
            << writes(Outcome::Clipped) << false << ProcessingStatus::warning(u"Clipped"_qs)
            << std::optional(Outcome::Clipped);
        QTest::newRow("cancelled by the service")
            << throws(ProcessingError::cancelled()) << false << ProcessingStatus::cancelled()
            << std::optional(Outcome::Cancelled);
        QTest::newRow("failure after the user cancelled is a cancellation")
            << throws(ProcessingError::ffmpegFailed(255, u"Exiting normally"_qs)) << true
            << ProcessingStatus::cancelled() << std::optional(Outcome::Cancelled);
        QTest::newRow("source gone")
            << throws(ProcessingError::sourceMissing(u"/in/Kick.wav"_qs)) << false
            << failed(L::SourceMissingMessage) << std::optional(Outcome::Failed);
        QTest::newRow("ffmpeg took too long: the file's fault")
            << throws(FFmpegError::timedOut(23)) << false << failed(L::TookTooLongMessage)
            << std::optional(Outcome::Failed);
        QTest::newRow("anything else reads as damaged")
            << throws(42) << false << failed(L::DamagedMessage) << std::optional(Outcome::Failed);
        QTest::newRow("ffmpeg missing: back to ready")
            << throws(FFmpegError::binaryNotFound()) << false << ProcessingStatus::ready()
            << std::optional<Outcome>();
        QTest::newRow("ffmpeg cannot start, even after cancel")
            << throws(FFmpegError::launchFailed(u"Permission denied"_qs)) << true
            << ProcessingStatus::ready() << std::optional<Outcome>();
    }

    void itemChange()
    {
        QFETCH(Job, job);
        QFETCH(bool, cancelled);
        QFETCH(ProcessingStatus, status);
        QFETCH(std::optional<Outcome>, recorded);
        const ItemChange change = JobOutcome::itemChange(JobOutcome::run(job, name), cancelled,
                                                         name, u"/out/LUFS_Kick.wav"_qs);
        QCOMPARE(change.status, status);
        QCOMPARE(change.installationFault.has_value(), !recorded);
        QCOMPARE(change.result.has_value(), recorded.has_value());
        if (!change.result)
            return;
        QCOMPARE(change.result->outcome, *recorded);
        QCOMPARE(change.result->sourceFileName, name);
        // A record made for a job without a result names the file it was to write.
        const bool ownResult = *recorded != Outcome::Cancelled && *recorded != Outcome::Failed;
        QCOMPARE(change.result->outputFileName, ownResult ? u"Kick.wav"_qs : u"LUFS_Kick.wav"_qs);
        QCOMPARE(change.measuredLUFS, ownResult ? std::optional(-21.5) : std::nullopt);
    }
};

QTEST_GUILESS_MAIN(JobOutcomeTest)
#include "JobOutcomeTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ErrorTranslator.h"

#include "../localization/LanguageFixture.h"
#include "engine/FFmpegError.h"
#include "engine/ProcessingError.h"
#include "localization/L.h"

#include <QTest>

#include <memory>

namespace {

using Make = std::function<std::shared_ptr<std::exception>()>;

template<typename Error>
Make make(Error error)
{
    return [error] { return std::make_shared<Error>(error); };
}

} // namespace

class ErrorTranslatorTest : public QObject
{
    Q_OBJECT

    const QString m_file = QStringLiteral("Kick 01.wav");

private Q_SLOTS:
    void translate_data()
    {
        QTest::addColumn<Make>("error");
        QTest::addColumn<QString>("message");
        QTest::addColumn<std::optional<QString>>("details");

        const QString f = m_file;
        const QString stderrFull =
            QStringLiteral("[out#0/wav] Error writing trailer: No space left on device\n");
        QTest::newRow("ffmpeg: disk full, as ffmpeg capitalises it")
            << make(ProcessingError::ffmpegFailed(1, stderrFull)) << L::text(L::DiskFullMessage, f)
            << std::optional<QString>(QStringLiteral("ffmpeg exit code 1\n\n") + stderrFull);
        QTest::newRow("ffmpeg: space before permission")
            << make(ProcessingError::ffmpegFailed(
                   1, QStringLiteral("Permission denied ... no space left")))
            << L::text(L::DiskFullMessage, f)
            << std::optional(
                   QStringLiteral("ffmpeg exit code 1\n\nPermission denied ... no space left"));
        QTest::newRow("ffmpeg: permission")
            << make(ProcessingError::ffmpegFailed(1,
                                                  QStringLiteral("/out/x.wav: Permission denied")))
            << L::text(L::PermissionMessage, f)
            << std::optional(QStringLiteral("ffmpeg exit code 1\n\n/out/x.wav: Permission denied"));
        QTest::newRow("ffmpeg: anything else")
            << make(ProcessingError::ffmpegFailed(
                   183, QStringLiteral("Invalid data found when processing input")))
            << L::text(L::DamagedMessage, f)
            << std::optional(QStringLiteral(
                   "ffmpeg exit code 183\n\nInvalid data found when processing input"));
        QTest::newRow("write: no space")
            << make(ProcessingError::writeFailed(QStringLiteral("No space left on device: /out")))
            << L::text(L::DiskFullMessage, f)
            << std::optional(QStringLiteral("No space left on device: /out"));
        QTest::newRow("write: not enough space")
            << make(ProcessingError::writeFailed(
                   QStringLiteral("There is not enough space on the disk")))
            << L::text(L::DiskFullMessage, f)
            << std::optional(QStringLiteral("There is not enough space on the disk"));
        QTest::newRow("write: no permission to save")
            << make(ProcessingError::writeFailed(
                   QStringLiteral("You don't have permission to save the file")))
            << L::text(L::PermissionMessage, f)
            << std::optional(QStringLiteral("You don't have permission to save the file"));
        QTest::newRow("write: access denied")
            << make(ProcessingError::writeFailed(QStringLiteral("Access denied")))
            << L::text(L::PermissionMessage, f) << std::optional(QStringLiteral("Access denied"));
        QTest::newRow("write: read-only disk")
            << make(ProcessingError::writeFailed(QStringLiteral("Read-only file system: /out")))
            << L::text(L::ReadOnlyMessage, f)
            << std::optional(QStringLiteral("Read-only file system: /out"));
        QTest::newRow("write: path too long")
            << make(ProcessingError::writeFailed(QStringLiteral("File name too long: /out/x")))
            << L::text(L::PathTooLongMessage, f)
            << std::optional(QStringLiteral("File name too long: /out/x"));
        QTest::newRow("ffmpeg: read-only disk")
            << make(ProcessingError::ffmpegFailed(
                   1, QStringLiteral("/out/x.wav: Read-only file system")))
            << L::text(L::ReadOnlyMessage, f)
            << std::optional(
                   QStringLiteral("ffmpeg exit code 1\n\n/out/x.wav: Read-only file system"));
        QTest::newRow("write: anything else")
            << make(ProcessingError::writeFailed(QStringLiteral("Input/output error: /out")))
            << L::text(L::WriteFailedMessage, f)
            << std::optional(QStringLiteral("Input/output error: /out"));
        QTest::newRow("source gone")
            << make(ProcessingError::sourceMissing(QStringLiteral("/in/a.wav")))
            << L::text(L::SourceMissingMessage, f) << std::optional(QStringLiteral("/in/a.wav"));
        QTest::newRow("source unreadable")
            << make(ProcessingError::sourceUnreadable(
                   QStringLiteral("Permission denied: /in/a.wav")))
            << L::text(L::SourceUnreadableMessage, f)
            << std::optional(QStringLiteral("Permission denied: /in/a.wav"));
        QTest::newRow("ffmpeg over its time")
            << make(FFmpegError::timedOut(23)) << L::text(L::TookTooLongMessage, f)
            << std::optional(QStringLiteral("FFmpegError.timedOut(after: 23 s)"));
        QTest::newRow("analysis: always a damaged file, whatever it says")
            << make(ProcessingError::analysisFailed(QStringLiteral("No space left on device")))
            << L::text(L::DamagedMessage, f)
            << std::optional(QStringLiteral("No space left on device"));
        QTest::newRow("same file")
            << make(ProcessingError::destinationEqualsSource())
            << L::text(L::SameFileSkippedMessage, f) << std::optional<QString>();
        QTest::newRow("cancelled") << make(ProcessingError::cancelled())
                                   << L::text(L::CancelledMessage) << std::optional<QString>();
        QTest::newRow("ffmpeg cannot start")
            << make(FFmpegError::launchFailed(QStringLiteral("Permission denied")))
            << L::text(L::DamagedMessage, f)
            << std::optional(QStringLiteral("FFmpegError.launchFailed(\"Permission denied\")"));
    }

    void translate()
    {
        QFETCH(Make, error);
        QFETCH(QString, message);
        QFETCH(std::optional<QString>, details);
        QCOMPARE(ErrorTranslator::translate(*error(), m_file), (FriendlyError{message, details}));
    }

    void speaksTheLanguageOfTheMoment()
    {
        const ProcessingError full =
            ProcessingError::writeFailed(QStringLiteral("No space left on device"));
        LanguageFixture russianSystem({QStringLiteral("ru-RU"), QStringLiteral("en-US")});
        QCOMPARE(ErrorTranslator::translate(full, m_file).message,
                 QStringLiteral("Не удалось сохранить «Kick 01.wav».\nДиск заполнен — освободите "
                                "место и повторите."));
        russianSystem.manager().setSelection(AppLanguage::En);
        QCOMPARE(ErrorTranslator::translate(full, m_file).message,
                 QStringLiteral("Could not save \u201cKick 01.wav\u201d.\nThe disk is full \u2014 "
                                "free up space and try again."));
    }
};

QTEST_GUILESS_MAIN(ErrorTranslatorTest)
#include "ErrorTranslatorTest.moc"

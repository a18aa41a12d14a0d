// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ErrorTranslator.h"

#include "../localization/LanguageFixture.h"
#include "engine/FFmpegError.h"
#include "engine/ProcessingError.h"
#include "localization/L.h"

#include <QTest>

#include <memory>

using Error = std::shared_ptr<const std::exception>;

namespace {

const QString file = QStringLiteral("Kick 01.wav");

template<typename E>
void row(const char *tag, const E &error, L::Text message, std::optional<QString> details = {})
{
    QTest::newRow(tag) << Error(std::make_shared<E>(error))
                       << (message == L::CancelledMessage ? L::text(message)
                                                          : L::text(message, file))
                       << details;
}

} // namespace

class ErrorTranslatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The words follow ffmpeg's and the system's own (English) wording; the
    // details keep the facts.
    void translate_data()
    {
        QTest::addColumn<Error>("error");
        QTest::addColumn<QString>("message");
        QTest::addColumn<std::optional<QString>>("details");

        using P = ProcessingError;
        const auto ffmpeg = [](int code, const char *text) {
            return P::ffmpegFailed(code, QString::fromLatin1(text));
        };
        const auto write = [](const char *text) {
            return P::writeFailed(QString::fromLatin1(text));
        };
        const QString full = QStringLiteral("[out#0/wav] Error writing trailer: No space left");
        row("ffmpeg: disk full, as ffmpeg capitalises it", P::ffmpegFailed(1, full),
            L::DiskFullMessage, QStringLiteral("ffmpeg exit code 1\n\n") + full);
        row("ffmpeg: space before permission", ffmpeg(1, "Permission denied ... no space left"),
            L::DiskFullMessage, u"ffmpeg exit code 1\n\nPermission denied ... no space left"_qs);
        row("ffmpeg: permission", ffmpeg(1, "/out/x.wav: Permission denied"), L::PermissionMessage,
            u"ffmpeg exit code 1\n\n/out/x.wav: Permission denied"_qs);
        row("ffmpeg: anything else", ffmpeg(183, "Invalid data found"), L::DamagedMessage,
            u"ffmpeg exit code 183\n\nInvalid data found"_qs);
        row("write: no space", write("No space left on device: /out"), L::DiskFullMessage,
            u"No space left on device: /out"_qs);
        row("write: not enough space", write("There is not enough space on the disk"),
            L::DiskFullMessage, u"There is not enough space on the disk"_qs);
        row("write: no permission", write("You don't have permission to save the file"),
            L::PermissionMessage, u"You don't have permission to save the file"_qs);
        row("write: access denied", write("Access denied"), L::PermissionMessage,
            u"Access denied"_qs);
        row("write: read-only disk", write("Read-only file system: /out"), L::ReadOnlyMessage,
            u"Read-only file system: /out"_qs);
        row("write: path too long", write("File name too long: /out/x"), L::PathTooLongMessage,
            u"File name too long: /out/x"_qs);
        row("write: anything else", write("Input/output error: /out"), L::WriteFailedMessage,
            u"Input/output error: /out"_qs);
        row("source gone", P::sourceMissing(u"/in/a.wav"_qs), L::SourceMissingMessage,
            u"/in/a.wav"_qs);
        row("source unreadable", P::sourceUnreadable(u"Permission denied: /in/a.wav"_qs),
            L::SourceUnreadableMessage, u"Permission denied: /in/a.wav"_qs);
        row("ffmpeg over its time", FFmpegError::timedOut(23), L::TookTooLongMessage,
            u"FFmpegError.timedOut(after: 23 s)"_qs);
        row("analysis: always a damaged file, whatever it says",
            P::analysisFailed(u"No space left on device"_qs), L::DamagedMessage,
            u"No space left on device"_qs);
        row("same file", P::destinationEqualsSource(), L::SameFileSkippedMessage);
        row("cancelled", P::cancelled(), L::CancelledMessage);
        row("ffmpeg cannot start", FFmpegError::launchFailed(u"Permission denied"_qs),
            L::DamagedMessage, u"FFmpegError.launchFailed(\"Permission denied\")"_qs);
    }

    void translate()
    {
        QFETCH(Error, error);
        QFETCH(QString, message);
        QFETCH(std::optional<QString>, details);
        QCOMPARE(ErrorTranslator::translate(*error, file), (FriendlyError{message, details}));
    }

    void speaksTheLanguageOfTheMoment()
    {
        const ProcessingError full = ProcessingError::writeFailed(u"No space left on device"_qs);
        LanguageFixture russianSystem({QStringLiteral("ru-RU"), QStringLiteral("en-US")});
        QCOMPARE(ErrorTranslator::translate(full, file).message,
                 QStringLiteral("Не удалось сохранить «Kick 01.wav».\nДиск заполнен — освободите "
                                "место и повторите."));
        russianSystem.manager().setSelection(AppLanguage::En);
        QVERIFY(ErrorTranslator::translate(full, file).message.startsWith(u"Could not save"));
    }
};

QTEST_GUILESS_MAIN(ErrorTranslatorTest)
#include "ErrorTranslatorTest.moc"

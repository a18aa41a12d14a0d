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
void row(const char *tag, const E &error, L::Text message, std::optional<QString> details)
{
    QTest::newRow(tag) << Error(std::make_shared<E>(error))
                       << (message == L::CancelledMessage ? L::text(message)
                                                          : L::text(message, file))
                       << details;
}

// ffmpeg's complaint, with its exit status in the details.
void ffmpeg(const char *tag, int code, const char *text, L::Text message)
{
    const QString complaint = QString::fromLatin1(text);
    row(tag, ProcessingError::ffmpegFailed(code, complaint), message,
        QStringLiteral("ffmpeg exit code %1\n\n").arg(code) + complaint);
}

// A failure whose details are the system's (or the path's) own words.
void said(const char *tag, ProcessingError (*make)(const QString &), const char *text,
          L::Text message)
{
    row(tag, make(QString::fromLatin1(text)), message, QString::fromLatin1(text));
}

} // namespace

class ErrorTranslatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The words follow ffmpeg's and the system's own (English) wording, the
    // first that matches deciding; the details keep the facts.
    void translate_data()
    {
        QTest::addColumn<Error>("error");
        QTest::addColumn<QString>("message");
        QTest::addColumn<std::optional<QString>>("details");

        using P = ProcessingError;
        ffmpeg("ffmpeg: disk full, as ffmpeg capitalises it", 1,
               "[out#0/wav] Error writing trailer: No space left", L::DiskFullMessage);
        ffmpeg("ffmpeg: space before permission", 1, "Permission denied ... no space left",
               L::DiskFullMessage);
        ffmpeg("ffmpeg: permission", 1, "/out/x.wav: Permission denied", L::PermissionMessage);
        ffmpeg("ffmpeg: anything else", 183, "Invalid data found", L::DamagedMessage);
        said("write: no space", P::writeFailed, "No space left on device", L::DiskFullMessage);
        said("write: not enough space", P::writeFailed, "There is not enough space on the disk",
             L::DiskFullMessage);
        said("write: no permission", P::writeFailed, "You don't have permission to save",
             L::PermissionMessage);
        said("write: access denied", P::writeFailed, "Access denied", L::PermissionMessage);
        said("write: read-only disk", P::writeFailed, "Read-only file system: /out",
             L::ReadOnlyMessage);
        said("write: path too long", P::writeFailed, "File name too long: /out/x",
             L::PathTooLongMessage);
        said("write: anything else", P::writeFailed, "Input/output error: /out",
             L::WriteFailedMessage);
        said("source gone", P::sourceMissing, "/in/a.wav", L::SourceMissingMessage);
        said("source unreadable", P::sourceUnreadable, "Permission denied: /in/a.wav",
             L::SourceUnreadableMessage);
        said("analysis: always a damaged file, whatever it says", P::analysisFailed,
             "No space left on device", L::DamagedMessage);
        row("ffmpeg over its time", FFmpegError::timedOut(23), L::TookTooLongMessage,
            u"FFmpegError.timedOut(after: 23 s)"_qs);
        row("ffmpeg cannot start", FFmpegError::launchFailed(u"Permission denied"_qs),
            L::DamagedMessage, u"FFmpegError.launchFailed(\"Permission denied\")"_qs);
        row("same file", P::destinationEqualsSource(), L::SameFileSkippedMessage, {});
        row("cancelled", P::cancelled(), L::CancelledMessage, {});
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

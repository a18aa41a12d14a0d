// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/FileImportService.h"

#include "files/FolderScanning.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A scanner that returns what it is told, so the import's own rules show.
class ScriptedScanner final : public FolderScanning
{
public:
    QList<ScannedAudioFile> files;
    QList<ScannedAudioFile> scanFolder(const QString &, QMap<QString, int> *) const override
    {
        return files;
    }
};

} // namespace

class FileImportServiceTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<ScriptedScanner> m_scanner = std::make_shared<ScriptedScanner>();
    FileImportService m_service{m_scanner};

    QString file(const QString &name)
    {
        const QString path = m_dir.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        return path;
    }

private Q_SLOTS:
    void nothingGivenNothingCounted()
    {
        const ImportSummary summary = m_service.importPaths({}, {});
        QVERIFY(summary.items.isEmpty());
        QCOMPARE(summary.unsupportedCount, 0);
        QCOMPARE(summary.duplicateCount, 0);
    }

    void singleFiles()
    {
        const ImportSummary summary = m_service.importPaths(
            {file(QStringLiteral("Take.AIF")), file(QStringLiteral("Take.aiff")),
             file(QStringLiteral("notes.txt")), file(QStringLiteral("cover.jpg")),
             m_dir.filePath(QStringLiteral("missing.wav")), file(QStringLiteral("noextension"))},
            {});
        QCOMPARE(summary.items.size(), 2);
        QCOMPARE(summary.items[0].sourceFormat, SourceAudioFormat::Aif);
        QCOMPARE(summary.items[0].relativePath, QStringLiteral("Take.AIF"));
        QCOMPARE(summary.items[1].sourceFormat, SourceAudioFormat::Aiff);
        QCOMPARE(summary.unsupportedCount, 4);
        const AudioFileItem &item = summary.items[0];
        QVERIFY(!item.id.isNull());
        QVERIFY(item.id != summary.items[1].id);
        QCOMPARE(item.category, AudioCategory::Other);
        QCOMPARE(item.status, ProcessingStatus::ready());
        QCOMPARE(item.resolvedOutputFormat, OutputFormatMode::KeepOriginal);
        QVERIFY(!item.measurement && !item.measuredLUFS && !item.result && !item.errorDetails);
    }

    void duplicatesAgainstTheQueueAndWithinTheImport()
    {
        const QString take = file(QStringLiteral("dup/Take.wav"));
        const ImportSummary first = m_service.importPaths({take}, {});
        QCOMPARE(first.items.size(), 1);
        // Given as it was, spelled with "..", and found again in its folder.
        m_scanner->files = {{take, QStringLiteral("Take.wav")},
                            {file(QStringLiteral("dup/Other.wav")), QStringLiteral("Other.wav")}};
        const ImportSummary again =
            m_service.importPaths({take, m_dir.filePath(QStringLiteral("dup/../dup/Take.wav")),
                                   m_dir.filePath(QStringLiteral("dup"))},
                                  first.items);
        QCOMPARE(again.items.size(), 1);
        QCOMPARE(again.items[0].relativePath, QStringLiteral("Other.wav"));
        QCOMPARE(again.duplicateCount, 3);
        // The item keeps the path as it was given, not the standardized one.
        const ImportSummary spelled =
            m_service.importPaths({m_dir.filePath(QStringLiteral("dup/./Take.wav"))}, {});
        QCOMPARE(spelled.items[0].sourcePath, m_dir.filePath(QStringLiteral("dup/./Take.wav")));
        QCOMPARE(spelled.items[0].relativePath, QStringLiteral("Take.wav"));
    }

    void scannedEntriesAreCheckedAgain()
    {
        // Another scanner might hand over anything: only audio names become items.
        const QString folder = m_dir.filePath(QStringLiteral("scan"));
        QDir().mkpath(folder);
        m_scanner->files = {
            {folder + QStringLiteral("/x/readme.txt"), QStringLiteral("x/readme.txt")},
            {folder + QStringLiteral("/x/Kick.WAV"), QStringLiteral("x/Kick.WAV")}};
        const ImportSummary summary = m_service.importPaths({folder}, {});
        QCOMPARE(summary.items.size(), 1);
        QCOMPARE(summary.items[0].relativePath, QStringLiteral("x/Kick.WAV"));
        QCOMPARE(summary.unsupportedCount, 1);
        m_scanner->files.clear();
        const ImportSummary empty = m_service.importPaths({folder}, {});
        QCOMPARE(empty.unsupportedCount + empty.duplicateCount + empty.items.size(), 0);
    }
};

QTEST_GUILESS_MAIN(FileImportServiceTest)
#include "FileImportServiceTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// Import of a real tree: what is found, what is passed over, in which order.
#include "files/FolderScanner.h"

#include "TestEnvironment.h"
#include "files/FileImportService.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

void touch(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write("x");
}

QStringList relativePaths(const QList<ScannedAudioFile> &files)
{
    QStringList paths;
    for (const ScannedAudioFile &file : files)
        paths.append(file.relativePath);
    return paths;
}

} // namespace

class FolderScannerTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_root;

private Q_SLOTS:
    void initTestCase()
    {
        m_root = m_dir.filePath(QStringLiteral("Sessions"));
        const QStringList files{
            QStringLiteral("a.mp3"),
            QStringLiteral("b/Take 10.wav"),
            QStringLiteral("b/Take 2.WAV"),
            QStringLiteral("b/take 1.Aif"),
            QStringLiteral("Звуки/Гром & «дождь» 100%.caf"),
            QStringLiteral("Звуки/-leading dash.m4a"),
            QStringLiteral("Звуки/line\nbreak.aiff"),
            QStringLiteral("deep/er/still/Kick's \"hard\".wav"),
            QStringLiteral("notes.txt"),
            QStringLiteral("cover.jpg"),
            QStringLiteral("flac/one.flac"),
            QStringLiteral(".hidden.wav"),
            QStringLiteral(".hidden folder/inside.wav"),
            QStringLiteral("Drum Kit.bundle/Contents/kick.wav"),
            QStringLiteral("Plug.VST3/x.wav"),
            QStringLiteral("unreadable/secret.wav"),
        };
        for (const QString &file : files)
            touch(m_root + u'/' + file);
        QVERIFY(QDir().mkpath(m_root + QStringLiteral("/folder.wav")));
        QVERIFY(QFile::link(m_root + QStringLiteral("/a.mp3"),
                            m_root + QStringLiteral("/link to a.mp3")));
        QVERIFY(QFile::link(m_root + QStringLiteral("/b"), m_root + QStringLiteral("/link to b")));
        QVERIFY(QFile::link(m_root, m_root + QStringLiteral("/deep/loop"))); // a cycle
        QVERIFY(QFile::link(m_root + QStringLiteral("/gone.wav"),
                            m_root + QStringLiteral("/dangling.wav")));
        QCOMPARE(
            ::mkfifo(QFile::encodeName(m_root + QStringLiteral("/pipe.wav")).constData(), 0644), 0);
    }

    void findsWhatAFileBrowserShows()
    {
        const QList<ScannedAudioFile> found = FolderScanner().scanFolder(m_root);
        // Names compare without case and digit runs by value; links, pipes,
        // hidden entries and package contents are not taken.
        QCOMPARE(relativePaths(found),
                 (QStringList{QStringLiteral("a.mp3"), QStringLiteral("b/take 1.Aif"),
                              QStringLiteral("b/Take 2.WAV"), QStringLiteral("b/Take 10.wav"),
                              QStringLiteral("deep/er/still/Kick's \"hard\".wav"),
                              QStringLiteral("unreadable/secret.wav"),
                              QStringLiteral("Звуки/-leading dash.m4a"),
                              QStringLiteral("Звуки/line\nbreak.aiff"),
                              QStringLiteral("Звуки/Гром & «дождь» 100%.caf")}));
        for (const ScannedAudioFile &file : found)
            QCOMPARE(file.url, m_root + u'/' + file.relativePath);
    }

    void folderIsStandardizedFirst()
    {
        const QString spelled = m_dir.path() + QStringLiteral("/./x/../Sessions/b/");
        const QList<ScannedAudioFile> found = FolderScanner().scanFolder(spelled);
        QCOMPARE(relativePaths(found),
                 (QStringList{QStringLiteral("take 1.Aif"), QStringLiteral("Take 2.WAV"),
                              QStringLiteral("Take 10.wav")}));
        QCOMPARE(found.first().url, m_root + QStringLiteral("/b/take 1.Aif"));
    }

    void unreadableFoldersArePassedOver()
    {
        if (qEnvironmentVariableIsSet("TONBROOK_SCAN_AS_UNPRIVILEGED")) {
            const QString root = qEnvironmentVariable("TONBROOK_SCAN_AS_UNPRIVILEGED");
            const QStringList found = relativePaths(FolderScanner().scanFolder(root));
            QVERIFY2(!found.contains(QStringLiteral("unreadable/secret.wav")),
                     qPrintable(found.join(u',')));
            QVERIFY(found.contains(QStringLiteral("b/Take 2.WAV")));
            return;
        }
        const QString unreadable = m_root + QStringLiteral("/unreadable");
        QVERIFY(QFile::setPermissions(unreadable, {}));
        for (QString folder = m_root; folder.startsWith(m_dir.path());
             folder = QFileInfo(folder).path())
            TestEnvironment::openToEveryone(folder);
        const auto openUp = qScopeGuard([&] {
            QFile::setPermissions(unreadable,
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        });
        QCOMPARE(TestEnvironment::runUnprivileged("unreadableFoldersArePassedOver",
                                                  QStringLiteral("TONBROOK_SCAN_AS_UNPRIVILEGED"),
                                                  m_root),
                 0);
    }

    void missingOrNotAFolderGivesNothing()
    {
        QVERIFY(FolderScanner().scanFolder(m_root + QStringLiteral("/missing")).isEmpty());
        QVERIFY(FolderScanner().scanFolder(m_root + QStringLiteral("/a.mp3")).isEmpty());
        QVERIFY(FolderScanner().scanFolder(QString()).isEmpty());
    }

    void importKeepsTheScannersOrderAndCounts()
    {
        const FileImportService service(std::make_shared<FolderScanner>());
        // The folder, then one of its files again, a link to another, a pipe,
        // a dangling link and the same folder spelled differently.
        const ImportSummary summary = service.importPaths(
            {m_root, m_root + QStringLiteral("/b/Take 2.WAV"),
             m_root + QStringLiteral("/link to a.mp3"), m_root + QStringLiteral("/pipe.wav"),
             m_root + QStringLiteral("/dangling.wav"), m_root + QStringLiteral("/./b/../b")},
            {});
        QCOMPARE(summary.items.size(), 9 + 1); // the link is a path of its own
        QCOMPARE(summary.items.first().relativePath, QStringLiteral("a.mp3"));
        QCOMPARE(summary.items.last().relativePath, QStringLiteral("link to a.mp3"));
        QCOMPARE(summary.duplicateCount, 1 + 3);
        // The pipe and the dangling link, and the folder's FLAC: audio Tonbrook
        // does not read. The folder's own notes.txt and cover.jpg are not audio.
        QCOMPARE(summary.unsupportedCount, 3);
        QCOMPARE(summary.unsupportedFormats,
                 (QMap<QString, int>{{QString(), 2}, {QStringLiteral("flac"), 1}}));
    }
};

QTEST_GUILESS_MAIN(FolderScannerTest)
#include "FolderScannerTest.moc"

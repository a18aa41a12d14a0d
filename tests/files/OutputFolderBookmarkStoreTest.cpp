// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/OutputFolderBookmarkStore.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class OutputFolderBookmarkStoreTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<QSettings> m_settings;

    QVariant stored() const
    {
        return QSettings(m_settings->fileName(), QSettings::IniFormat)
            .value(QStringLiteral("outputFolderBookmark"));
    }

private Q_SLOTS:
    void init()
    {
        QFile::remove(m_dir.filePath(QStringLiteral("p.ini")));
        m_settings = std::make_shared<QSettings>(m_dir.filePath(QStringLiteral("p.ini")),
                                                 QSettings::IniFormat);
    }

    void nothingStoredNothingRestored()
    {
        const OutputFolderBookmarkStore store(m_settings);
        QCOMPARE(store.restore(), std::nullopt);
        QVERIFY(!stored().isValid());
        QVERIFY(m_settings->allKeys().isEmpty());
    }

    void roundTrip()
    {
        const QString folder = m_dir.filePath(QStringLiteral("Output Ёлка"));
        QVERIFY(QDir().mkpath(folder));
        const OutputFolderBookmarkStore store(m_settings);
        store.save(folder);
        QCOMPARE(stored().toByteArray(), folder.toUtf8());
        QCOMPARE(OutputFolderBookmarkStore(
                     std::make_shared<QSettings>(m_settings->fileName(), QSettings::IniFormat))
                     .restore(),
                 std::optional(folder));
    }

    void unusableDataIsKeptButNotRestored_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("not a path") << QByteArray("\x00\x01bookmark", 10);
        QTest::newRow("relative") << QByteArray("relative/folder");
        QTest::newRow("folder gone") << QByteArray("/no/such/folder/anywhere");
    }

    void unusableDataIsKeptButNotRestored()
    {
        QFETCH(QByteArray, data);
        m_settings->setValue(QStringLiteral("outputFolderBookmark"), data);
        m_settings->sync();
        QCOMPARE(OutputFolderBookmarkStore(m_settings).restore(), std::nullopt);
        QCOMPARE(stored().toByteArray(), data);
    }

    void aFolderThatCannotBeRememberedForgetsTheOldOne()
    {
        const OutputFolderBookmarkStore store(m_settings);
        store.save(m_dir.path());
        store.save(QStringLiteral("relative/path"));
        QVERIFY(!stored().isValid());
        QCOMPARE(store.restore(), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(OutputFolderBookmarkStoreTest)
#include "OutputFolderBookmarkStoreTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/OutputPathService.h"

#include "TestEnvironment.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class OutputPathServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void overlap_data()
    {
        QTest::addColumn<QString>("root");
        QTest::addColumn<QStringList>("sources");
        QTest::addColumn<bool>("overlaps");
        QTest::newRow("same folder") << "/A" << QStringList{QStringLiteral("/A/x.wav")} << true;
        QTest::newRow("output inside the source folder")
            << "/A/out" << QStringList{QStringLiteral("/A/x.wav")} << true;
        QTest::newRow("source inside the output folder")
            << "/A" << QStringList{QStringLiteral("/A/sub/x.wav")} << true;
        QTest::newRow("a name that only begins alike")
            << "/AB" << QStringList{QStringLiteral("/A/x.wav")} << false;
        QTest::newRow("trailing slash")
            << "/A/" << QStringList{QStringLiteral("/A/sub/x.wav")} << true;
        QTest::newRow("spelled with dot-dot")
            << "/A/out" << QStringList{QStringLiteral("/A/b/../x.wav")} << true;
        QTest::newRow("case matters") << "/a" << QStringList{QStringLiteral("/A/x.wav")} << false;
        QTest::newRow("the later one decides")
            << "/B" << QStringList{QStringLiteral("/A/x.wav"), QStringLiteral("/B/c/y.wav")}
            << true;
        QTest::newRow("nothing queued") << "/A" << QStringList() << false;
    }

    void overlap()
    {
        QFETCH(QString, root);
        QFETCH(QStringList, sources);
        QFETCH(bool, overlaps);
        QCOMPARE(OutputPathService().isInsideSourceTree(root, sources), overlaps);
    }

    void writability()
    {
        QTemporaryDir dir;
        const OutputPathService service;
        QVERIFY(service.isWritable(dir.path()));
        QVERIFY(service.isWritable(dir.filePath(QStringLiteral("not yet there"))));
        if (qEnvironmentVariableIsSet("TONBROOK_WRITE_AS_UNPRIVILEGED")) {
            const QString locked = qEnvironmentVariable("TONBROOK_WRITE_AS_UNPRIVILEGED");
            QVERIFY(!service.isWritable(locked));
            QVERIFY(!service.isWritable(locked + QStringLiteral("/new folder")));
            return;
        }
        const QString locked = dir.filePath(QStringLiteral("locked"));
        QVERIFY(QDir().mkpath(locked));
        QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner |
                                                  QFile::ReadOther | QFile::ExeOther));
        TestEnvironment::openToEveryone(dir.path());
        QCOMPARE(TestEnvironment::runUnprivileged(
                     "writability", QStringLiteral("TONBROOK_WRITE_AS_UNPRIVILEGED"), locked),
                 0);
    }
};

QTEST_GUILESS_MAIN(OutputPathServiceTest)
#include "OutputPathServiceTest.moc"

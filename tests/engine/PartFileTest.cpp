// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PartFile.h"

#include "engine/ProcessingError.h"
#include "model/StandardPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A process id that was just in use and is free now.
qint64 deadPid()
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return child;
}

// This process's hidden-file name for "take.wav" with another owner put in.
QString withOwner(qint64 pid, const QString &boot = {})
{
    QString name = PartFile::nameFor(QStringLiteral("take.wav"));
    const qsizetype pidStart = PartFile::prefix.size();
    const qsizetype pidEnd = name.indexOf(u'-', pidStart);
    if (!boot.isEmpty())
        name.replace(pidEnd + 1, 8, boot);
    return name.replace(pidStart, pidEnd - pidStart, QString::number(pid));
}

} // namespace

class PartFileTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    void owners_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("abandoned");
        QTest::addColumn<QString>("destination");
        const QString take = QStringLiteral("take.wav");
        QTest::newRow("this process") << PartFile::nameFor(take) << false << take;
        QTest::newRow("a live process") << withOwner(1) << false << take;
        QTest::newRow("a process that ended") << withOwner(deadPid()) << true << take;
        QTest::newRow("a live id from another boot")
            << withOwner(1, QStringLiteral("0badb007")) << true << take;
        QTest::newRow("someone else's hidden file")
            << QStringLiteral(".tbpart-7F3A6C21-0D44-4C4B-9A7E-2B1C55E0A9F1-take.wav") << false
            << QString();
        QTest::newRow("not hidden") << QStringLiteral("take.wav") << false << QString();
    }

    void owners()
    {
        QFETCH(QString, name);
        QFETCH(bool, abandoned);
        QFETCH(QString, destination);
        QCOMPARE(PartFile::isAbandoned(name), abandoned);
        QCOMPARE(PartFile::destinationName(name), destination);
    }

    void removesOnlyWhatKilledRunsLeft()
    {
        const QString folder = m_dir.filePath(QStringLiteral("sweep"));
        QVERIFY(QDir().mkpath(folder));
        const QStringList kept{PartFile::nameFor(QStringLiteral("mine.wav")), withOwner(1),
                               QStringLiteral("take.wav"),
                               QStringLiteral(".tbpart-not-ours-take.wav")};
        const QStringList left{withOwner(deadPid()), withOwner(1, QStringLiteral("0badb007"))};
        for (const QString &name : kept + left) {
            QFile file(folder + u'/' + name);
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QCOMPARE(PartFile::removeAbandoned(folder), 2);
        QStringList remaining = QDir(folder).entryList(QDir::Files | QDir::Hidden);
        QStringList expected = kept;
        remaining.sort();
        expected.sort();
        QCOMPARE(remaining, expected);
    }

    void longNamesFitTheFileSystem()
    {
        const QString longName = QString(120, QChar(0x0416)) + QStringLiteral(".wav"); // 244 bytes
        const QString name = PartFile::nameFor(longName);
        QVERIFY(encodedPath(name).size() <= 255);
        QVERIFY(name.endsWith(QStringLiteral("\u0416.wav")));
        QVERIFY(longName.startsWith(PartFile::destinationName(name).chopped(4)));
    }

    void neverReplacesWhatIsThere()
    {
        const QString folder = m_dir.filePath(QStringLiteral("move"));
        QVERIFY(QDir().mkpath(folder + QStringLiteral("/take 2.wav"))); // a folder by that name
        QFile theirs(folder + QStringLiteral("/take.wav"));
        QVERIFY(theirs.open(QIODevice::WriteOnly) && theirs.write("theirs") == 6);
        theirs.close();

        QString written;
        {
            PartFile part(folder + QStringLiteral("/take.wav"));
            QFile ours(part.path());
            QVERIFY(ours.open(QIODevice::WriteOnly) && ours.write("ours") == 4);
            ours.close();
            written = part.moveIntoPlace();
        }
        QCOMPARE(written, folder + QStringLiteral("/take 3.wav"));
        QVERIFY(theirs.open(QIODevice::ReadOnly));
        QCOMPARE(theirs.readAll(), QByteArray("theirs"));
        QFile ours(written);
        QVERIFY(ours.open(QIODevice::ReadOnly));
        QCOMPARE(ours.readAll(), QByteArray("ours"));
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList({QStringLiteral("take 2.wav"), QStringLiteral("take 3.wav"),
                              QStringLiteral("take.wav")}));
    }

    // As when the display connection is lost and Qt calls exit() from deep inside.
    void goneWhenTheProcessExitsWithoutUnwinding()
    {
        const QString folder = m_dir.filePath(QStringLiteral("exit"));
        QVERIFY(QDir().mkpath(folder));
        const pid_t child = ::fork();
        if (child == 0) {
            auto *leaked = new PartFile(folder + QStringLiteral("/take.wav"));
            std::exit(::access(encodedPath(leaked->path()).constData(), F_OK) == 0 ? 1 : 2);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(WEXITSTATUS(status), 1); // the hidden file was there until the exit
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    void refusalNamesTheFileTheUserWillHave()
    {
        const QString destination = m_dir.filePath(QStringLiteral("no such folder/take.wav"));
        try {
            PartFile part(destination);
            QFAIL("a hidden file was made in a folder that is not there");
        } catch (const ProcessingError &error) {
            QCOMPARE(error, ProcessingError::writeFailed(
                                QStringLiteral("No such file or directory: ") + destination));
        }
    }
};

QTEST_GUILESS_MAIN(PartFileTest)
#include "PartFileTest.moc"

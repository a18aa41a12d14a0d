// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PartFile.h"

#include "RunChecks.h"
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
    QString name = PartFile::nameFor(u"take.wav"_qs);
    const qsizetype pidStart = PartFile::prefix.size();
    const qsizetype pidEnd = name.indexOf(u'-', pidStart);
    if (!boot.isEmpty())
        name.replace(pidEnd + 1, 8, boot);
    return name.replace(pidStart, pidEnd - pidStart, QString::number(pid));
}

using RunChecks::contents;

} // namespace

class PartFileTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    // Whose a hidden file is, and which name it stands for; a sweep of a
    // folder removes exactly those whose run was killed.
    void owners()
    {
        struct Case
        {
            QString name;
            bool abandoned;
            QString destination;
        };
        const QList<Case> cases{
            {PartFile::nameFor(u"take.wav"_qs), false, u"take.wav"_qs},
            {withOwner(1), false, u"take.wav"_qs}, // a live process
            {withOwner(deadPid()), true, u"take.wav"_qs},
            {withOwner(1, u"0badb007"_qs), true, u"take.wav"_qs}, // a live id from another boot
            {u".tbpart-7F3A6C21-0D44-4C4B-9A7E-2B1C55E0A9F1-take.wav"_qs, false, {}}, // not ours
            {u".tbpart-not-ours-take.wav"_qs, false, {}},
            {u"take.wav"_qs, false, {}},
        };
        QStringList kept;
        for (const Case &c : cases) {
            QCOMPARE(PartFile::isAbandoned(c.name), c.abandoned);
            QCOMPARE(PartFile::destinationName(c.name), c.destination);
            QFile file(m_dir.filePath(c.name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            if (!c.abandoned)
                kept.append(c.name);
        }
        QCOMPARE(PartFile::removeAbandoned(m_dir.path()), 2);
        kept.sort();
        QCOMPARE(QDir(m_dir.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name), kept);
    }

    void longNamesFitTheFileSystem()
    {
        const QString longName = QString(120, QChar(0x0416)) + u".wav"_qs; // 244 bytes
        const QString name = PartFile::nameFor(longName);
        QVERIFY(encodedPath(name).size() <= 255);
        QVERIFY(name.endsWith(u"\u0416.wav"_qs));
        QVERIFY(longName.startsWith(PartFile::destinationName(name).chopped(4)));
    }

    // Moved into place under the first name that is free, file or folder.
    void neverReplacesWhatIsThere()
    {
        const QString folder = m_dir.filePath(u"move"_qs);
        QVERIFY(QDir().mkpath(folder + u"/take 2.wav"_qs));
        QFile theirs(folder + u"/take.wav"_qs);
        QVERIFY(theirs.open(QIODevice::WriteOnly) && theirs.write("theirs") == 6);
        theirs.close();
        QString written;
        {
            PartFile part(folder + u"/take.wav"_qs);
            QFile ours(part.path());
            QVERIFY(ours.open(QIODevice::WriteOnly) && ours.write("ours") == 4);
            ours.close();
            written = part.moveIntoPlace();
        }
        QCOMPARE(written, folder + u"/take 3.wav"_qs);
        QCOMPARE(contents(theirs.fileName()), QByteArray("theirs"));
        QCOMPARE(contents(written), QByteArray("ours"));
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList({u"take 2.wav"_qs, u"take 3.wav"_qs, u"take.wav"_qs}));
    }

    // As when the display connection is lost and Qt calls exit() from deep inside.
    void goneWhenTheProcessExitsWithoutUnwinding()
    {
        const QString folder = m_dir.filePath(u"exit"_qs);
        QVERIFY(QDir().mkpath(folder));
        const pid_t child = ::fork();
        if (child == 0) {
            auto *leaked = new PartFile(folder + u"/take.wav"_qs);
            std::exit(::access(encodedPath(leaked->path()).constData(), F_OK) == 0 ? 1 : 2);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(WEXITSTATUS(status), 1); // the hidden file was there until the exit
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    void refusalNamesTheFileTheUserWillHave()
    {
        const QString destination = m_dir.filePath(u"no such folder/take.wav"_qs);
        try {
            PartFile part(destination);
            QFAIL("a hidden file was made in a folder that is not there");
        } catch (const ProcessingError &error) {
            QCOMPARE(error,
                     ProcessingError::writeFailed(u"No such file or directory: "_qs + destination));
        }
    }
};

QTEST_GUILESS_MAIN(PartFileTest)
#include "PartFileTest.moc"

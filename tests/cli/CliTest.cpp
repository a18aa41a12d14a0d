// SPDX-License-Identifier: GPL-3.0-or-later
//
// tonbrook-cli as a user runs it, on generated audio, through the bundled ffmpeg.
#include "RunChecks.h"
#include "TestAudio.h"
#include "TestEnvironment.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using Segment = TestAudio::Segment;

namespace {

using RunChecks::digest;
using RunChecks::filesBelow;

struct Run
{
    int status = -1;
    QString out;
    QString err;
};

QString cli()
{
    return RunChecks::cliPath();
}

Run run(const QStringList &arguments)
{
    const RunChecks::CliRun result = RunChecks::runCli(arguments);
    return {result.finished ? result.status : -1, QString::fromUtf8(result.out), result.err};
}

} // namespace

class CliTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_tree;
    QMap<QString, QByteArray> m_digests;

    QString write(const QString &relative, const std::vector<Segment> &signal, int rate = 48000)
    {
        const QString path = m_tree + u'/' + relative;
        QDir().mkpath(QFileInfo(path).path());
        const QString wav =
            path.endsWith(QStringLiteral(".wav")) ? path : path + QStringLiteral(".src.wav");
        if (!TestAudio::writeWav(wav, rate, 2, signal))
            return {};
        if (wav != path) {
            if (!TestAudio::encode(TestEnvironment::ffmpegPath(), wav, path).isEmpty())
                return {};
            QFile::remove(wav);
        }
        return path;
    }

    void checkSourcesUntouched()
    {
        for (auto it = m_digests.cbegin(); it != m_digests.cend(); ++it)
            QCOMPARE(digest(it.key()), it.value());
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_tree = m_dir.filePath(QStringLiteral("Session"));
        QVERIFY(
            !write(QStringLiteral("Drums/Kicks/Kick 01.wav"), {Segment::sine(-12, 3)}).isEmpty());
        QVERIFY(!write(QStringLiteral("Drums/Loop.aiff"), {Segment::noise(-30, 4)}).isEmpty());
        QVERIFY(!write(QStringLiteral("Voice/Line 1.mp3"), {Segment::sine(-25, 4, 300)}, 44100)
                     .isEmpty());
        QFile broken(m_tree + QStringLiteral("/broken.wav"));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("not audio at all");
        broken.close();
        QFile notes(m_tree + QStringLiteral("/Voice/notes.txt"));
        QVERIFY(notes.open(QIODevice::WriteOnly));
        notes.close();
        for (const QString &file : filesBelow(m_tree))
            m_digests.insert(m_tree + u'/' + file, digest(m_tree + u'/' + file));
    }

    void cleanup() { checkSourcesUntouched(); }

    void jsonRunWritesEveryFileAndTheReport()
    {
        const QString out = m_dir.filePath(QStringLiteral("json-out"));
        const Run result =
            run({QStringLiteral("--json"), QStringLiteral("-o"), out, QStringLiteral("--preset"),
                 QStringLiteral("podcast"), QStringLiteral("--report"),
                 out + QStringLiteral("/report.csv"), m_tree});
        QCOMPARE(result.status, 1); // broken.wav failed
        QMap<QString, QJsonObject> byPath;
        for (const QString &line : result.out.split(u'\n', Qt::SkipEmptyParts)) {
            const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
            byPath.insert(object.value(QStringLiteral("relativePath")).toString(), object);
        }
        QCOMPARE(byPath.keys(),
                 (QStringList{QStringLiteral("Drums/Kicks/Kick 01.wav"),
                              QStringLiteral("Drums/Loop.aiff"), QStringLiteral("Voice/Line 1.mp3"),
                              QStringLiteral("broken.wav")}));

        const QJsonObject kick = byPath.value(QStringLiteral("Drums/Kicks/Kick 01.wav"));
        QCOMPARE(kick.value(QStringLiteral("status")).toString(), QStringLiteral("done"));
        QCOMPARE(kick.value(QStringLiteral("output")).toString(),
                 out + QStringLiteral("/Drums/Kicks/Kick 01.wav"));
        QVERIFY(kick.value(QStringLiteral("message")).isNull());
        const QJsonObject kickResult = kick.value(QStringLiteral("result")).toObject();
        QCOMPARE(kickResult.value(QStringLiteral("outcome")).toString(), QStringLiteral("Success"));
        QCOMPARE(kickResult.value(QStringLiteral("finalLUFS")).toDouble(), -16.0);
        QVERIFY(qAbs(kick.value(QStringLiteral("measurement"))
                         .toObject()
                         .value(QStringLiteral("inputI"))
                         .toDouble() -
                     -12.0) < 0.5);

        const QJsonObject broken = byPath.value(QStringLiteral("broken.wav"));
        QCOMPARE(broken.value(QStringLiteral("status")).toString(), QStringLiteral("failed"));
        QVERIFY(broken.value(QStringLiteral("measurement")).isNull());
        QVERIFY(broken.value(QStringLiteral("output")).isNull());
        QVERIFY(broken.value(QStringLiteral("message"))
                    .toString()
                    .contains(QStringLiteral("broken.wav")));
        QVERIFY(!broken.value(QStringLiteral("errorDetails")).toString().isEmpty());

        QCOMPARE(filesBelow(out),
                 (QStringList{QStringLiteral("Drums/Kicks/Kick 01.wav"),
                              QStringLiteral("Drums/Loop.aiff"), QStringLiteral("Voice/Line 1.mp3"),
                              QStringLiteral("report.csv")}));
        QFile report(out + QStringLiteral("/report.csv"));
        QVERIFY(report.open(QIODevice::ReadOnly));
        const QByteArray csv = report.readAll();
        QCOMPARE(csv.count("\r\n"), 5);
        QVERIFY(csv.contains("broken.wav,broken.wav,,,,,Failed\r\n"));
    }

    void textRunInEitherLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("expectedLines");
        QTest::newRow("en") << "en"
                            << QStringList{
                                   QStringLiteral("4 added"), QStringLiteral("Processing Complete"),
                                   QStringLiteral("4 files processed"),
                                   QStringLiteral("3 converted"), QStringLiteral("1 failed")};
        QTest::newRow("ru") << "ru"
                            << QStringList{QStringLiteral("4 файла добавлены"),
                                           QStringLiteral("Обработка завершена"),
                                           QStringLiteral("4 файла обработаны"),
                                           QStringLiteral("3 файла сконвертированы"),
                                           QStringLiteral("1 файл с ошибкой")};
    }

    void textRunInEitherLanguage()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, expectedLines);
        const QString out = m_dir.filePath(QStringLiteral("text-") + language);
        const Run result =
            run({QStringLiteral("--language"), language, QStringLiteral("--no-normalize"),
                 QStringLiteral("--format"), QStringLiteral("wav"), QStringLiteral("--bit-depth"),
                 QStringLiteral("16"), QStringLiteral("--prefix"), QStringLiteral("LUFS_"),
                 QStringLiteral("-o"), out, m_tree});
        QCOMPARE(result.status, 1);
        const QStringList lines = result.out.split(u'\n', Qt::SkipEmptyParts);
        for (const QString &expected : expectedLines)
            QVERIFY2(lines.contains(expected), qPrintable(result.out));
        QCOMPARE(lines.size(), 1 + 4 + expectedLines.size() - 1); // notice, one per file, summary
        QVERIFY(QFile::exists(out + QStringLiteral("/Voice/LUFS_Line 1.wav")));
        QVERIFY(result.err.isEmpty()); // no terminal: no progress bar
    }

    void analyzeOnlyWritesNothing()
    {
        const Run result =
            run({QStringLiteral("--analyze-only"), QStringLiteral("-o"),
                 m_dir.filePath(QStringLiteral("never")), m_tree + QStringLiteral("/Drums")});
        QCOMPARE(result.status, 0);
        QVERIFY(result.out.contains(QStringLiteral("Kicks/Kick 01.wav \u2014 ")));
        QVERIFY(!QFileInfo::exists(m_dir.filePath(QStringLiteral("never"))));
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        QTest::newRow("no output folder") << QStringList{m_tree} << "--output";
        QTest::newRow("unknown format")
            << QStringList{QStringLiteral("-o"), QStringLiteral("/tmp/x"),
                           QStringLiteral("--format"), QStringLiteral("flac"), m_tree}
            << "--format";
        QTest::newRow("target out of range")
            << QStringList{QStringLiteral("-o"), QStringLiteral("/tmp/x"),
                           QStringLiteral("--target"), QStringLiteral("-3"), m_tree}
            << "--target";
        QTest::newRow("unknown option")
            << QStringList{QStringLiteral("--frobnicate"), m_tree} << "frobnicate";
        QTest::newRow("no jobs") << QStringList{QStringLiteral("-o"), QStringLiteral("/tmp/x"),
                                                QStringLiteral("--jobs"), QStringLiteral("0"),
                                                m_tree}
                                 << "--jobs";
        QTest::newRow("too many jobs")
            << QStringList{QStringLiteral("-o"), QStringLiteral("/tmp/x"), QStringLiteral("--jobs"),
                           QStringLiteral("65"), m_tree}
            << "--jobs";
        QTest::newRow("no paths") << QStringList{QStringLiteral("-o"), QStringLiteral("/tmp/x")}
                                  << "no files";
        QTest::newRow("nothing importable")
            << QStringList{QStringLiteral("-o"), QStringLiteral("/tmp/x"),
                           m_tree + QStringLiteral("/Voice/notes.txt")}
            << "nothing to do";
    }

    void usageErrors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const Run result = run(arguments);
        QCOMPARE(result.status, 2);
        QVERIFY2(result.err.contains(named), qPrintable(result.err));
        QVERIFY(!QFileInfo::exists(QStringLiteral("/tmp/x/broken.wav")));
    }

    // The same command again, told to skip what is there, writes only what the
    // first run did not finish: an output deleted since, and one cut short
    // (only its hidden part file is left). A third time it writes nothing.
    void skipExistingWritesOnlyWhatIsMissing()
    {
        const QString out = m_dir.filePath(QStringLiteral("resumed"));
        const QStringList command{QStringLiteral("--language"), QStringLiteral("en"),
                                  QStringLiteral("-o"), out, m_tree};
        const QStringList written{QStringLiteral("Drums/Kicks/Kick 01.wav"),
                                  QStringLiteral("Drums/Loop.aiff"),
                                  QStringLiteral("Voice/Line 1.mp3")};
        QCOMPARE(run(QStringList{QStringLiteral("--jobs"), QStringLiteral("1")} + command).status,
                 1);
        QCOMPARE(filesBelow(out), written);
        const QString kick = out + QStringLiteral("/Drums/Kicks/Kick 01.wav");
        const QByteArray kickDigest = digest(kick);
        QVERIFY(QFile::remove(out + QStringLiteral("/Drums/Loop.aiff")));
        QVERIFY(QFile::rename(out + QStringLiteral("/Voice/Line 1.mp3"),
                              out + QStringLiteral("/Voice/.tbpart-1-0-0-Line 1.mp3")));
        const auto outputs = [&out] {
            QStringList files = filesBelow(out);
            files.removeIf([](const QString &file) { return file.contains(u"/.tbpart-"); });
            return files;
        };

        const Run resumed = run(QStringList{QStringLiteral("--skip-existing")} + command);
        QCOMPARE(resumed.status, 1); // broken.wav fails again
        QCOMPARE(outputs(), written);
        QCOMPARE(digest(kick), kickDigest);
        const QStringList lines = resumed.out.split(u'\n', Qt::SkipEmptyParts);
        QVERIFY2(lines.contains(
                     QStringLiteral("Kick 01.wav \u2014 Skipped \u2014 Already written: ") + kick),
                 qPrintable(resumed.out));
        QVERIFY2(lines.contains(QStringLiteral("3 files processed")), qPrintable(resumed.out));
        QVERIFY2(lines.contains(QStringLiteral("1 file skipped: already written")),
                 qPrintable(resumed.out));

        const QString report = m_dir.filePath(QStringLiteral("resumed.csv"));
        const Run again =
            run(QStringList{QStringLiteral("--skip-existing"), QStringLiteral("--json"),
                            QStringLiteral("--report"), report} +
                command);
        QCOMPARE(again.status, 1);
        QCOMPARE(outputs(), written);
        QFile csvFile(report);
        QVERIFY(csvFile.open(QIODevice::ReadOnly));
        const QString csv = QString::fromUtf8(csvFile.readAll());
        QStringList skipped;
        for (const QString &line : again.out.split(u'\n', Qt::SkipEmptyParts)) {
            const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
            const QString relative = object.value(QStringLiteral("relativePath")).toString();
            const QJsonObject result = object.value(QStringLiteral("result")).toObject();
            // The report's row says the same, figures empty as nothing was measured or written.
            QVERIFY2(
                csv.contains(QStringLiteral("%1,%2,,,,,%3\r\n")
                                 .arg(result.value(QStringLiteral("sourceFileName")).toString(),
                                      result.value(QStringLiteral("outputFileName")).toString(),
                                      result.value(QStringLiteral("outcome")).toString())),
                qPrintable(line));
            if (object.value(QStringLiteral("status")).toString() != u"skipped")
                continue;
            skipped.append(relative);
            QCOMPARE(object.value(QStringLiteral("output")).toString(), out + u'/' + relative);
            QCOMPARE(result.value(QStringLiteral("outcome")).toString(), QStringLiteral("Skipped"));
        }
        skipped.sort();
        QCOMPARE(skipped, written);
    }

    void interruptStopsEverythingCleanly()
    {
        const QString long1 = write(QStringLiteral("Long/a.wav"), {Segment::noise(-20, 120)});
        const QString long2 = write(QStringLiteral("Long/b.wav"), {Segment::noise(-22, 120)});
        QVERIFY(!long1.isEmpty() && !long2.isEmpty());
        const QString out = m_dir.filePath(QStringLiteral("interrupted"));
        QProcess process;
        process.start(cli(), {QStringLiteral("--format"), QStringLiteral("mp3"),
                              QStringLiteral("-o"), out, m_tree + QStringLiteral("/Long")});
        QVERIFY(process.waitForStarted());
        // Wait until ffmpeg is writing a hidden file, then press Ctrl-C.
        QElapsedTimer waited;
        waited.start();
        while (!filesBelow(out).join(u' ').contains(QStringLiteral(".tbpart-")) &&
               waited.elapsed() < 60000)
            QTest::qWait(20);
        QVERIFY2(waited.elapsed() < 60000, "processing never started");
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 130);
        const QString printed = QString::fromUtf8(process.readAllStandardOutput());
        QVERIFY2(!printed.contains(QStringLiteral("Processing Complete")), qPrintable(printed));
        QVERIFY2(filesBelow(out).filter(QStringLiteral(".tbpart-")).isEmpty(),
                 qPrintable(filesBelow(out).join(u',')));
        QCOMPARE(RunChecks::ffmpegProcessesMentioning(out), 0);
        m_digests.insert(long1, digest(long1)); // unchanged from here on, too
        QFile::remove(long1);
        QFile::remove(long2);
        m_digests.remove(long1);
    }
};

QTEST_GUILESS_MAIN(CliTest)
#include "CliTest.moc"

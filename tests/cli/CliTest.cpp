// SPDX-License-Identifier: GPL-3.0-or-later
//
// tonbrook-cli as a user runs it, on generated audio, through the bundled ffmpeg.
#include "RunChecks.h"
#include "localization/L.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <tuple>

using Segment = TestAudio::Segment;
using RunChecks::filesBelow;

class CliTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_tree;
    QMap<QString, QByteArray> m_sources;

    // Runs the front end with TREE, SOLO and OUT in the arguments standing for the test's folders.
    RunChecks::CliRun run(QStringList arguments, const QString &out = {})
    {
        for (QString &argument : arguments)
            argument.replace(u"TREE"_qs, m_tree)
                .replace(u"SOLO"_qs, m_dir.filePath(u"Solo"_qs))
                .replace(u"OUT"_qs, out);
        return RunChecks::runCli(arguments);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_tree = m_dir.filePath(u"Session"_qs);
        QVERIFY(RunChecks::writeAudio(m_tree + u"/Drums/Kicks/Kick 01.wav"_qs,
                                      {Segment::sine(-12, 3)}));
        QVERIFY(RunChecks::writeAudio(m_tree + u"/Drums/Loop.aiff"_qs, {Segment::noise(-30, 4)}));
        QVERIFY(RunChecks::writeAudio(m_tree + u"/Voice/Line 1.mp3"_qs,
                                      {Segment::sine(-25, 4, 300)}, 44100));
        QVERIFY(
            RunChecks::writeAudio(m_dir.filePath(u"Solo/take.wav"_qs), {Segment::noise(-20, 1)}));
        QFile broken(m_tree + u"/broken.wav"_qs);
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("not audio at all") > 0);
        broken.close();
        QFile notes(m_tree + u"/Voice/notes.txt"_qs);
        QVERIFY(notes.open(QIODevice::WriteOnly));
        m_sources = RunChecks::snapshot(m_tree);
        // Whatever a run leaves in the temporary folder is found there.
        QVERIFY(QDir().mkpath(m_dir.filePath(u"tmp"_qs)));
        qputenv("TMPDIR", QFile::encodeName(m_dir.filePath(u"tmp"_qs)));
    }

    // Every run leaves the sources as they were and nothing in the temporary folder.
    void cleanup()
    {
        QCOMPARE(RunChecks::changedSince(m_sources), QStringList());
        QCOMPARE(QDir(m_dir.filePath(u"tmp"_qs)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
    }

    // What a run prints, says and writes, by its command line (TREE, SOLO and OUT
    // stand for the test's folders).
    void runs_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("printed"); // lines among those of standard output
        QTest::addColumn<int>("lines");       // -1: any number
        QTest::addColumn<QString>("said");    // on standard error; empty: nothing at all
        QTest::addColumn<QString>("written"); // below OUT; none: OUT is not made
        const QString text =
            u" --no-normalize --format wav --bit-depth 16 --prefix LUFS_ -o OUT TREE"_qs;
        const QString converted =
            u"Drums/Kicks/LUFS_Kick 01.wav\nDrums/LUFS_Loop.wav\nVoice/LUFS_Line 1.wav"_qs;
        // The import notice, one line per file, the summary; no progress bar without a terminal.
        QTest::newRow("in English")
            << u"--language en"_qs + text << 1
            << u"4 added\nProcessing Complete\n4 files processed\n3 converted\n1 failed"_qs << 9
            << QString() << converted;
        QTest::newRow("in Russian")
            << u"--language ru"_qs + text << 1
            << u"4 файла добавлены\nОбработка завершена\n4 файла обработаны\n"
               "3 файла сконвертированы\n1 файл с ошибкой"_qs
            << 9 << QString() << converted;
        QTest::newRow("analyze only")
            << u"--analyze-only -o OUT TREE/Drums"_qs << 0 << u"Kicks/Kick 01.wav \u2014 "_qs << 3
            << QString() << QString();
        QTest::newRow("a path that is not there")
            << u"-o OUT SOLO SOLO/nothing.wav"_qs << 1 << QString() << -1
            << L::text(L::CliNoSuchPath, u"SOLO/nothing.wav"_qs) << u"take.wav"_qs;
        // A prefix names files and cannot hide them.
        QTest::newRow("a prefix of dots")
            << u"--prefix .. -o OUT SOLO"_qs << 0 << QString() << -1 << QString() << u"take.wav"_qs;
        QTest::newRow("output among the sources")
            << u"-o SOLO/normalized SOLO"_qs << 0 << QString() << -1 << L::text(L::WarnInsideSource)
            << QString();
        QTest::newRow("help") << u"--help"_qs << 0 << QString() << -1 << QString() << QString();
        QTest::newRow("version") << u"--version"_qs << 0 << QString() << 1 << QString()
                                 << QString();
        for (const auto &[tag, command, said] :
             {std::tuple{"no output folder", u"TREE"_qs, u"--output"_qs},
              {"unknown format", u"-o OUT --format flac TREE"_qs, u"--format"_qs},
              {"target out of range", u"-o OUT --target -3 TREE"_qs, u"--target"_qs},
              {"unknown option", u"--frobnicate TREE"_qs, u"frobnicate"_qs},
              {"no jobs", u"-o OUT --jobs 0 TREE"_qs, u"--jobs"_qs},
              {"too many jobs", u"-o OUT --jobs 65 TREE"_qs, u"--jobs"_qs},
              {"no paths", u"-o OUT"_qs, L::text(L::CliNeedsPaths)},
              {"nothing importable", u"-o OUT TREE/Voice/notes.txt"_qs,
               L::text(L::CliNothingImported)}})
            QTest::newRow(tag) << command << 2 << QString() << -1 << said << QString();
        // A report is never written over audio, a queued source or a name like audio,
        // and a run refused for it writes nothing.
        for (const QString &report : {u"TREE/broken.wav"_qs, u"SOLO/report.wav"_qs})
            for (const QString &mode : {QString(), u"--analyze-only "_qs})
                QTest::newRow(qPrintable(mode + u"report over "_qs + report))
                    << mode + u"-o OUT --report %1 %2"_qs.arg(report, report.section(u'/', 0, 0))
                    << 2 << QString() << -1 << L::text(L::ReportOverAudioRefused, report)
                    << QString();
    }

    void runs()
    {
        QFETCH(QString, command);
        QFETCH(int, status);
        QFETCH(QString, printed);
        QFETCH(int, lines);
        QFETCH(QString, said);
        QFETCH(QString, written);
        const QString out = m_dir.filePath(QLatin1StringView(QTest::currentDataTag()));
        const RunChecks::CliRun result = run(command.split(u' '), out);
        QCOMPARE(result.status, status);
        const QString stdOut = QString::fromUtf8(result.out);
        const QStringList shown = stdOut.split(u'\n', Qt::SkipEmptyParts);
        for (const QString &expected : printed.split(u'\n', Qt::SkipEmptyParts))
            QVERIFY2(shown.filter(expected).size() == 1, qPrintable(expected + u'\n' + stdOut));
        QVERIFY2(lines < 0 || shown.size() == lines, qPrintable(stdOut));
        said.replace(u"SOLO"_qs, m_dir.filePath(u"Solo"_qs)).replace(u"TREE"_qs, m_tree);
        QVERIFY2(said.isEmpty() ? result.err.isEmpty() : result.err.contains(said),
                 qPrintable(result.err));
        QCOMPARE(filesBelow(out), written.split(u'\n', Qt::SkipEmptyParts));
        QCOMPARE(QFileInfo::exists(out), !written.isEmpty());
    }

    // One JSON line per file and the report, both as written on disk. The same
    // command again, told to skip what is there, writes only what the first run
    // did not finish: an output deleted since, and one cut short (only its
    // hidden part file is left). A third time it writes nothing.
    void jsonReportAndSkipExisting()
    {
        const QString out = m_dir.filePath(u"resumed"_qs);
        const QString report = m_dir.filePath(u"resumed.csv"_qs);
        const QStringList command{u"--language"_qs, u"en"_qs, u"-o"_qs, out, m_tree};
        const QStringList json{u"--json"_qs, u"--report"_qs, report};
        const QStringList written{u"Drums/Kicks/Kick 01.wav"_qs, u"Drums/Loop.aiff"_qs,
                                  u"Voice/Line 1.mp3"_qs};
        const RunChecks::CliRun first =
            run(QStringList{u"--jobs"_qs, u"1"_qs, u"--preset"_qs, u"podcast"_qs} + json + command);
        QCOMPARE(first.status, 1); // broken.wav failed
        QCOMPARE(filesBelow(out), written);
        auto printed = RunChecks::printedBy(first.out, u"relativePath"_qs);
        QCOMPARE(printed.keys(), written + QStringList{u"broken.wav"_qs});
        for (const QString &file : written) {
            const QJsonObject entry = printed.value(file);
            QCOMPARE(entry.value(u"status").toString(), u"done"_qs);
            QCOMPARE(entry.value(u"output").toString(), out + u'/' + file);
            QVERIFY(entry.value(u"message").isNull());
            const QJsonObject result = entry.value(u"result").toObject();
            QCOMPARE(result.value(u"outcome").toString(), u"Success"_qs);
            QCOMPARE(result.value(u"finalLUFS").toDouble(), -16.0);
            QCOMPARE(entry[u"measurement"][u"inputI"].toDouble(),
                     result[u"originalLUFS"].toDouble());
        }
        QVERIFY(qAbs(printed.value(written[0])[u"measurement"][u"inputI"].toDouble() + 12) < 0.5);
        QVERIFY(printed.value(u"broken.wav"_qs).value(u"measurement").isNull());
        RunChecks::checkReport(report, printed);

        const QString kick = out + u"/Drums/Kicks/Kick 01.wav"_qs;
        const QByteArray kickDigest = RunChecks::digest(kick);
        QVERIFY(QFile::remove(out + u"/Drums/Loop.aiff"_qs));
        QVERIFY(QFile::rename(out + u"/Voice/Line 1.mp3"_qs,
                              out + u"/Voice/.tbpart-1-0-0-Line 1.mp3"_qs));
        const auto outputs = [&out] {
            return filesBelow(out).filter(QRegularExpression(u"^(?!.*/\\.tbpart-)"_qs));
        };
        const RunChecks::CliRun resumed = run(QStringList{u"--skip-existing"_qs} + command);
        QCOMPARE(resumed.status, 1); // broken.wav fails again
        QCOMPARE(outputs(), written);
        QCOMPARE(RunChecks::digest(kick), kickDigest);
        const QStringList lines = QString::fromUtf8(resumed.out).split(u'\n');
        for (const QString &line :
             QStringList{u"Kick 01.wav \u2014 Skipped \u2014 Already written: "_qs + kick,
                         u"3 files processed"_qs, u"1 file skipped: already written"_qs})
            QVERIFY2(lines.contains(line), resumed.out.constData());

        const RunChecks::CliRun again = run(QStringList{u"--skip-existing"_qs} + json + command);
        QCOMPARE(again.status, 1);
        QCOMPARE(outputs(), written);
        printed = RunChecks::printedBy(again.out, u"relativePath"_qs);
        QStringList skipped;
        for (const QJsonObject &entry : printed)
            if (entry.value(u"status").toString() == u"skipped") {
                skipped.append(entry.value(u"relativePath").toString());
                QCOMPARE(entry.value(u"output").toString(), out + u'/' + skipped.last());
                QCOMPARE(entry[u"result"][u"outcome"].toString(), u"Skipped"_qs);
            }
        QCOMPARE(skipped, written);
        RunChecks::checkReport(report, printed);
    }
};

QTEST_GUILESS_MAIN(CliTest)
#include "CliTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/CSVReportService.h"

#include "TestEnvironment.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

namespace {

const double inf = std::numeric_limits<double>::infinity();

QList<ProcessingResult> everyOutcome()
{
    using O = ProcessingOutcome;
    return {
        {QStringLiteral("Kick, hard.wav"),
         QStringLiteral("Kick, hard.wav"),
         -20.04,
         -14.0,
         6.04,
         -1.26,
         O::Success,
         {}},
        {QStringLiteral("Say \"hi\".mp3"), QStringLiteral("LUFS_Say \"hi\".mp3"), -20.0, -18.0, 2.0,
         -1.0, O::PeakLimited, QStringLiteral("Target -20.00 \u2192 could not reach target")},
        {QStringLiteral("conversion.aif"),
         QStringLiteral("conversion.wav"),
         {},
         {},
         {},
         {},
         O::Success,
         {}},
        {QStringLiteral("silence.wav"),
         QStringLiteral("silence.wav"),
         -inf,
         qQNaN(),
         0.0,
         inf,
         O::Success,
         {}},
        {QStringLiteral("broken.wav"), QString(), {}, {}, {}, {}, O::Failed, {}},
        {QStringLiteral("line\nbreak\r.caf"),
         QStringLiteral("Тишина.caf"),
         -23.0,
         -23.0,
         -0.04,
         -5.55,
         O::Cancelled,
         {}},
    };
}

} // namespace

class CSVReportServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(TestEnvironment::commaLocaleActiveAsRequested()); }

    void exactText()
    {
        const QList<ProcessingResult> results = everyOutcome();
        const QString csv = CSVReportService::makeCSV(results.mid(0, 4));
        QCOMPARE(
            csv,
            QStringLiteral(
                "Source file,Output file,Original LUFS,Final LUFS,Applied gain,True peak,Status\r\n"
                "\"Kick, hard.wav\",\"Kick, hard.wav\",-20.0,-14.0,+6.0,-1.3,Success\r\n"
                "\"Say \"\"hi\"\".mp3\",\"LUFS_Say \"\"hi\"\".mp3\",-20.0,-18.0,+2.0,-1.0,Peak "
                "limited\r\n"
                "conversion.aif,conversion.wav,,,,,Success\r\n"
                "silence.wav,silence.wav,,,+0.0,,Success\r\n"));
        QCOMPARE(CSVReportService::makeCSV({}),
                 QStringLiteral("Source file,Output file,Original LUFS,Final LUFS,Applied "
                                "gain,True peak,Status\r\n"));
    }

    void anIndependentReaderGetsTheSameValues()
    {
        const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
        if (python.isEmpty())
            QSKIP("python3 is not installed");
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tonbrook Report.csv"));
        QCOMPARE(CSVReportService::write(path, everyOutcome()), std::nullopt);

        QProcess reader;
        reader.start(python, {QStringLiteral(TONBROOK_TEST_SOURCE_DIR "/files/read_csv.py"), path});
        QVERIFY(reader.waitForFinished(30000));
        QCOMPARE(reader.exitCode(), 0);
        const QJsonObject parsed = QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
        QCOMPARE(parsed.value(QStringLiteral("bom")).toBool(), false);
        QCOMPARE(parsed.value(QStringLiteral("crlf")).toInt(),
                 7); // header and six rows; the CR in a name is alone
        QCOMPARE(parsed.value(QStringLiteral("bare_lf")).toInt(), 1); // the LF inside a name

        const QJsonArray rows = parsed.value(QStringLiteral("rows")).toArray();
        QCOMPARE(rows.size(), 7);
        const auto rowAt = [&rows](int i) { return rows.at(i).toVariant().toStringList(); };
        QCOMPARE(rowAt(0), CSVReportService::columns());
        QCOMPARE(
            rowAt(2),
            (QStringList{QStringLiteral("Say \"hi\".mp3"), QStringLiteral("LUFS_Say \"hi\".mp3"),
                         QStringLiteral("-20.0"), QStringLiteral("-18.0"), QStringLiteral("+2.0"),
                         QStringLiteral("-1.0"), QStringLiteral("Peak limited")}));
        QCOMPARE(rowAt(5),
                 (QStringList{QStringLiteral("broken.wav"), QString(), QString(), QString(),
                              QString(), QString(), QStringLiteral("Failed")}));
        QCOMPARE(rowAt(6), (QStringList{QStringLiteral("line\nbreak\r.caf"),
                                        QStringLiteral("Тишина.caf"), QStringLiteral("-23.0"),
                                        QStringLiteral("-23.0"), QStringLiteral("-0.0"),
                                        QStringLiteral("-5.5"), QStringLiteral("Cancelled")}));
    }

    void aReportThatCannotBeWrittenSaysWhy()
    {
        QTemporaryDir dir;
        const auto problem =
            CSVReportService::write(dir.filePath(QStringLiteral("missing/folder/r.csv")), {});
        QVERIFY(problem);
        QVERIFY(!problem->isEmpty());
    }
};

QTEST_GUILESS_MAIN(CSVReportServiceTest)
#include "CSVReportServiceTest.moc"

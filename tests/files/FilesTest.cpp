// SPDX-License-Identifier: GPL-3.0-or-later
// Scanning, import, output names and folders, the report, the preferences, the values they use.
#include "TestEnvironment.h"
#include "files/CSVReportService.h"
#include "files/FileImportService.h"
#include "files/FileNamingService.h"
#include "files/FolderScanner.h"
#include "files/OutputDestination.h"
#include "files/OutputFolderBookmarkStore.h"
#include "files/OutputPathService.h"
#include "files/SettingsStore.h"
#include "model/NumberFormat.h"
#include "model/StandardPath.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <sys/stat.h>

using Bookmark = OutputFolderBookmarkStore;
using Format = std::optional<SourceAudioFormat>;
using Mode = OutputFormatMode;

namespace {

QStringList list(const char *joined)
{
    return QString::fromUtf8(joined).split(u'|', Qt::SkipEmptyParts);
}

// What a file browser shows of the scanned tree, in its order.
const QStringList shown = list("a.mp3|b/take 1.Aif|b/Take 2.WAV|b/Take 10.wav|"
                               "deep/er/still/Kick's \"hard\".wav|unreadable/secret.wav|"
                               "Звуки/-leading dash.m4a|Звуки/line\nbreak.aiff|"
                               "Звуки/Гром & «дождь» 100%.caf");

QStringList without(QStringList paths, const QString &path)
{
    paths.removeAll(path);
    return paths;
}

// The relative paths a scan finds (the full path where it is not the standardized folder's).
QStringList found(const QString &folder)
{
    QStringList paths;
    for (const ScannedAudioFile &file : FolderScanner().scanFolder(folder))
        paths.append(file.url == standardizedPath(folder) + u'/' + file.relativePath
                         ? file.relativePath
                         : file.url);
    return paths;
}

// Where a run over these relative paths writes below root ("*": found already written there).
QStringList run(const QStringList &relativePaths, const QString &root,
                const ProcessingSettings &settings, const QString &sources = u"/src"_qs)
{
    QSet<QString> reserved;
    QStringList names;
    for (const QString &relative : relativePaths) {
        const AudioFileItem item{.id = QUuid::createUuid(),
                                 .sourcePath = sources + u'/' + fileNameOf(relative),
                                 .relativePath = relative,
                                 .sourceFormat = *SourceAudioFormats::fromFileName(relative)};
        const OutputDestination destination =
            OutputDestination::forItem(item, settings, root, reserved);
        names.append(destination.path.mid(root.size() + 1) + (destination.existing ? u"*" : u""));
    }
    return names;
}

} // namespace

class FilesTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_root = m_dir.filePath(u"Sessions"_qs); // the scanned tree

    QString at(const QString &relative) const { return m_root + u'/' + relative; }

    static QString touch(const QString &path)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile(path).open(QIODevice::WriteOnly);
        return path;
    }

    // A new settings object, as a new launch has.
    std::shared_ptr<QSettings> preferences(const QString &name) const
    {
        return std::make_shared<QSettings>(m_dir.filePath(name + u".ini"), QSettings::IniFormat);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(TestEnvironment::commaLocaleActiveAsRequested());
        // Passed over: hidden entries, package contents, what is no audio or not read by us.
        for (const QString &file :
             shown + list("notes.txt|README|flac/one.flac|.hidden.wav|.hidden folder/inside.wav|"
                          "Drum Kit.bundle/Contents/kick.wav|Plug.VST3/x.wav"))
            touch(at(file));
        QVERIFY(QDir().mkpath(at(u"folder.wav"_qs)));
        QVERIFY(QFile::link(at(u"a.mp3"_qs), at(u"link to a.mp3"_qs)));
        QVERIFY(QFile::link(at(u"b"_qs), at(u"link to b"_qs)));
        QVERIFY(QFile::link(m_root, at(u"deep/loop"_qs)));
        QVERIFY(QFile::link(at(u"gone.wav"_qs), at(u"dangling.wav"_qs)));
        QCOMPARE(::mkfifo(QFile::encodeName(at(u"pipe.wav"_qs)).constData(), 0644), 0);
    }

    void scan()
    {
        QCOMPARE(found(m_root), shown);
        QCOMPARE(found(m_dir.path() + u"/./x/../Sessions/b/"_qs),
                 list("take 1.Aif|Take 2.WAV|Take 10.wav"));
        QCOMPARE(found(at(u"missing"_qs)), QStringList());
        QCOMPARE(found(at(u"a.mp3"_qs)), QStringList());
        QCOMPARE(found(QString()), QStringList());
    }

    void importTakesEachFileOnceAndCountsTheRest()
    {
        const FileImportService service(std::make_shared<FolderScanner>());
        const QString spelled = at(u"b/../b/take 1.Aif"_qs);
        const QList<AudioFileItem> queued = service.importPaths({spelled}, {}).items;
        QCOMPARE(queued, (QList<AudioFileItem>{{.id = queued.value(0).id,
                                                .sourcePath = spelled,
                                                .relativePath = u"take 1.Aif"_qs,
                                                .sourceFormat = SourceAudioFormat::Aif}}));
        QVERIFY(!queued[0].id.isNull());
        // The folder, one of its files again spelled otherwise, a link to another, a pipe, a
        // dangling link, the folder spelled differently, and files that are no audio or not there.
        const ImportSummary summary =
            service.importPaths({m_root, at(u"b/./Take 2.WAV"_qs), at(u"link to a.mp3"_qs),
                                 at(u"pipe.wav"_qs), at(u"dangling.wav"_qs), at(u"./b/../b"_qs),
                                 at(u"notes.txt"_qs), at(u"README"_qs), at(u"missing.wav"_qs)},
                                queued);
        QStringList taken;
        for (const AudioFileItem &item : summary.items)
            taken.append(item.relativePath);
        QCOMPARE(taken, without(shown, u"b/take 1.Aif"_qs) << u"link to a.mp3"_qs);
        QCOMPARE(summary.items.first().sourcePath, at(u"a.mp3"_qs));
        QVERIFY(summary.items[0].id != summary.items[1].id);
        QCOMPARE(summary.duplicateCount, 1 + 1 + 3); // the queued file, Take 2 alone, b again
        // The folder's flac is audio in a format not read; its notes.txt is no audio.
        QCOMPARE(summary.unsupportedFormats,
                 (QMap<QString, int>{{QString(), 4}, {u"flac"_qs, 1}, {u"txt"_qs, 1}}));
        QCOMPARE(summary.unsupportedCount, 6);
    }

    // A run of one or two items into a folder holding onDisk ("@": a dangling link named
    // Take.wav). The folder is spelled with "./", so a path compared unstandardized shows.
    void destinations_data()
    {
        QTest::addColumn<QStringList>("relativePaths");
        QTest::addColumn<ProcessingSettings>("settings");
        QTest::addColumn<QStringList>("onDisk");
        QTest::addColumn<QStringList>("names");
        const auto row = [](const char *tag, const char *paths, const ProcessingSettings &settings,
                            const char *onDisk, const char *names) {
            QTest::newRow(tag) << list(paths) << settings << list(onDisk) << list(names);
        };
        const ProcessingSettings mp3{.outputFormatMode = Mode::Mp3};
        const ProcessingSettings prefixed{.addPrefix = true, .prefix = u"norm_"_qs};
        const ProcessingSettings oddPrefix{.addPrefix = true, .prefix = u"..a/b_"_qs};
        row("folders, none left out", "../Drums/./Kicks/Kick.wav", {}, "", "Drums/Kicks/Kick.wav");
        row("the last dot", "v1.2 final.aif", mp3, "", "v1.2 final.mp3");
        row("prefix not twice", "norm_Kick.wav", prefixed, "", "norm_Kick.wav");
        row("prefix is case-sensitive", "NORM_Kick.wav", prefixed, "", "norm_NORM_Kick.wav");
        row("prefix makes no folder nor hidden file", "Kick.wav", oddPrefix, "", "a_b_Kick.wav");
        // Two items an empty folder takes as "Take.wav" and "Take 2.wav".
        const char *const takes = "Take.wav|Take.aiff";
        const ProcessingSettings wav{.outputFormatMode = Mode::Wav};
        const ProcessingSettings skip{.outputFormatMode = Mode::Wav, .skipExisting = true};
        row("names taken on disk", takes, wav, "Take.wav|Take 2.wav", "Take 3.wav|Take 4.wav");
        row("a dangling link is taken", takes, wav, "@", "Take 2.wav|Take 3.wav");
        row("skip: the first", takes, skip, "Take.wav", "Take.wav*|Take 2.wav");
        row("skip: the second", takes, skip, "Take 2.wav", "Take.wav|Take 2.wav*");
        row("skip: a cut-short write", takes, skip, ".tbpart-1-boot-0-Take.wav",
            "Take.wav|Take 2.wav");
        row("skip: a folder is no output", takes, skip, "Take.wav/x", "Take 2.wav|Take 3.wav");
    }

    void destinations()
    {
        QFETCH(QStringList, relativePaths);
        QFETCH(ProcessingSettings, settings);
        QFETCH(QStringList, onDisk);
        QFETCH(QStringList, names);
        const QString folder = m_dir.filePath(QLatin1String(QTest::currentDataTag()));
        QVERIFY(QDir().mkpath(folder));
        for (const QString &name : onDisk) {
            if (name == u"@")
                QVERIFY(QFile::link(u"nowhere"_qs, folder + u"/Take.wav"));
            else
                touch(folder + u'/' + name);
        }
        const QString spelled = m_dir.path() + u"/./" + QLatin1String(QTest::currentDataTag());
        QCOMPARE(run(relativePaths, spelled, settings), names);
    }

    // A run into the sources' own folder, skipping or not; a name without an extension.
    void neverTheSourceItself()
    {
        const QString folder = QFileInfo(touch(m_dir.filePath(u"here/Take.wav"_qs))).path();
        for (bool skipExisting : {false, true})
            QCOMPARE(run({u"Take.wav"_qs}, folder, {.skipExisting = skipExisting}, folder),
                     QStringList{u"Take 2.wav"_qs});
        QCOMPARE(FileNamingService::uniquePath(at(u"README"_qs), {}), at(u"README 2"_qs));
    }

    // Rows of the root, the sources (joined by ",") and whether the root is among them; a
    // name that only begins alike is another folder.
    void outputInsideASourceFolder()
    {
        for (const QString &row : list("/A /A/x.wav 1|/A/out /A/x.wav 1|/A /A/sub/x.wav 1|"
                                       "/AB /A/x.wav 0|/A/ /A/sub/x.wav 1|/A/out /A/b/../x.wav 1|"
                                       "/a /A/x.wav 0|/B /A/x.wav,/B/c/y.wav 1|/A - 0")) {
            const QStringList cells = row.split(u' ');
            const QStringList sources = cells[1].split(u',').filter(u"/"_qs);
            QVERIFY2(OutputPathService().isInsideSourceTree(cells[0], sources) ==
                         (cells[2] == u"1"),
                     qPrintable(row));
        }
    }

    // Root reads and writes through any permission bits: this runs again as another user.
    void unreadableAndReadOnlyFolders()
    {
        const OutputPathService service;
        QVERIFY(service.isWritable(m_dir.path()));
        QVERIFY(service.isWritable(m_dir.filePath(u"not yet there"_qs)));
        if (qEnvironmentVariableIsSet("TONBROOK_AS_UNPRIVILEGED")) {
            const QString root = qEnvironmentVariable("TONBROOK_AS_UNPRIVILEGED");
            QCOMPARE(found(root + u"/Sessions"), without(shown, u"unreadable/secret.wav"_qs));
            QVERIFY(!service.isWritable(root + u"/locked"));
            QVERIFY(!service.isWritable(root + u"/locked/new folder"));
            return;
        }
        const QString locked = m_dir.filePath(u"locked"_qs);
        QVERIFY(QDir().mkpath(locked));
        QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner |
                                                  QFile::ReadOther | QFile::ExeOther));
        const QString unreadable = at(u"unreadable"_qs);
        QVERIFY(QFile::setPermissions(unreadable, {}));
        TestEnvironment::openToEveryone(m_dir.path());
        TestEnvironment::openToEveryone(m_root);
        const int status = TestEnvironment::runUnprivileged(
            "unreadableAndReadOnlyFolders", u"TONBROOK_AS_UNPRIVILEGED"_qs, m_dir.path());
        QFile::setPermissions(unreadable, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(status, 0);
    }

    // The report as written, byte for byte: quoting, figures, outcomes and line ends.
    void csvReport()
    {
        using O = ProcessingOutcome;
        const double inf = std::numeric_limits<double>::infinity();
        const QString path = m_dir.filePath(u"Tonbrook Report.csv"_qs);
        const QList<ProcessingResult> results{
            {u"a, b.wav"_qs, u"Say \"hi\".mp3"_qs, -20.04, -14.0, 6.04, -1.26, O::Success, {}},
            {u"a\nb\r.caf"_qs, u"Тишь.caf"_qs, -inf, qQNaN(), -0.04, inf, O::PeakLimited, {}},
            {u"broken.wav"_qs, {}, {}, {}, {}, {}, O::Failed, {}},
            {u"c.aif"_qs, u"c.wav"_qs, -23.0, -23.0, 0.0, -5.55, O::Cancelled, {}}};
        QCOMPARE(CSVReportService::write(path, results), std::nullopt);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(
            file.readAll(),
            u"Source file,Output file,Original LUFS,Final LUFS,Applied gain,True peak,Status\r\n"
            "\"a, b.wav\",\"Say \"\"hi\"\".mp3\",-20.0,-14.0,+6.0,-1.3,Success\r\n"
            "\"a\nb\r.caf\",Тишь.caf,,,-0.0,,Peak limited\r\n"
            "broken.wav,,,,,,Failed\r\n"
            "c.aif,c.wav,-23.0,-23.0,+0.0,-5.5,Cancelled\r\n"_qs.toUtf8());
        const auto problem = CSVReportService::write(m_dir.filePath(u"missing/r.csv"_qs), {});
        QVERIFY(problem && !problem->isEmpty());
    }

    // A new launch finds every choice, the output folder only through its bookmark; a
    // folder that cannot be remembered forgets the old one.
    void everyChoiceComesBack()
    {
        const ProcessingSettings chosen{.normalizeLoudness = false,
                                        .selectedPreset = *LoudnessPreset::builtIn(u"custom"),
                                        .customTargetLUFS = -18.5,
                                        .truePeakCeiling = -2.3,
                                        .sampleRateMode = SampleRateMode::Rate48000,
                                        .bitDepth = OutputBitDepth::Float32,
                                        .outputFormatMode = Mode::Mp3,
                                        .outputFolder = u"/kept/by/the/bookmark"_qs,
                                        .revealInFinderWhenComplete = false,
                                        .addPrefix = true,
                                        .prefix = u"Mix «1» "_qs};
        const QString folder = m_dir.filePath(u"Output Ёлка"_qs);
        QVERIFY(QDir().mkpath(folder));
        SettingsStore(preferences(u"round"_qs)).save(chosen);
        SettingsStore(preferences(u"round"_qs)).saveWindowSize({1400, 900});
        Bookmark(preferences(u"round"_qs)).save(folder);
        const SettingsStore store(preferences(u"round"_qs));
        ProcessingSettings expected = chosen;
        expected.outputFolder.reset();
        QCOMPARE(store.restore(ProcessingSettings()), expected);
        QCOMPARE(store.windowSize(), std::optional(QSize(1400, 900)));
        QCOMPARE(Bookmark(preferences(u"round"_qs)).restore(), std::optional(folder));
        QCOMPARE(preferences(u"round"_qs)->value(Bookmark::defaultKey).toByteArray(),
                 folder.toUtf8());
        Bookmark(preferences(u"round"_qs)).save(u"relative/path"_qs);
        QVERIFY(!preferences(u"round"_qs)->contains(Bookmark::defaultKey));
    }

    // Nothing stored gives the defaults and writes nothing. A store without a file restores and
    // saves in every command-line run; only its window size is asked here.
    void nothingStoredGivesTheDefaults()
    {
        const ProcessingSettings defaults{.outputFolder = u"/kept"_qs};
        QCOMPARE(SettingsStore(preferences(u"empty"_qs)).restore(defaults), defaults);
        QCOMPARE(Bookmark(preferences(u"empty"_qs)).restore(), std::nullopt);
        QVERIFY(preferences(u"empty"_qs)->allKeys().isEmpty());
        QCOMPARE(SettingsStore(nullptr).windowSize(), std::nullopt);
    }

    // Each value is ignored, and kept as it was in the file.
    void storedValuesThatCannotBeTaken()
    {
        int files = 0;
        for (const auto &[key, stored] :
             {std::pair{"processing/preset", QVariant(u"loud"_qs)},
              {"processing/customTargetLUFS", -3.0},
              {"processing/customTargetLUFS", u"x"_qs},
              {"processing/truePeakCeiling", 0.5},
              {"processing/outputFormat", u"flac"_qs},
              {"processing/sampleRate", u"96000"_qs},
              {"processing/bitDepth", 20},
              {"processing/revealWhenComplete", u"yes"_qs},
              {"window/size", QSize(0, 0)},
              {"outputFolderBookmark", QByteArray("\x00\x01bookmark", 10)},
              {"outputFolderBookmark", QByteArray("relative/folder")},
              {"outputFolderBookmark", QByteArray("/no/such/folder/anywhere")}}) {
            const QString name = u"ignored "_qs + QString::number(++files);
            preferences(name)->setValue(QLatin1String(key), stored);
            QVERIFY2(SettingsStore(preferences(name)).restore({}) == ProcessingSettings() &&
                         !SettingsStore(preferences(name)).windowSize() &&
                         !Bookmark(preferences(name)).restore() &&
                         preferences(name)->contains(QLatin1String(key)),
                     key);
        }
    }

    // Only a whole C number is read, whatever the locale (how figures are written, the report
    // shows); a preset without a target takes the custom one.
    void numbers()
    {
        QCOMPARE(NumberFormat::parseDouble(u"-23.54"), std::optional(-23.54));
        QCOMPARE(NumberFormat::parseDouble(u"1e3"), std::optional(1000.0));
        for (const QString &text : {u""_qs, u" -1"_qs, u"-23.5x"_qs, u"-23,5"_qs, u"1,000.5"_qs,
                                    u"abc"_qs, u"\u22121"_qs})
            QVERIFY2(!NumberFormat::parseDouble(text), qPrintable(text));
        QCOMPARE((ProcessingSettings{.selectedPreset = {u"x"_qs, std::nullopt, false},
                                     .customTargetLUFS = -18.5}
                      .effectiveTargetLUFS()),
                 -18.5);
    }
};

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"

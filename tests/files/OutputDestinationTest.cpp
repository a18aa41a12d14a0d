// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/OutputDestination.h"

#include "files/FileNamingService.h"
#include "model/StandardPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

AudioFileItem item(const QString &source, const QString &relativePath)
{
    return {QUuid::createUuid(),
            source,
            relativePath,
            *SourceAudioFormats::fromFileName(source),
            AudioCategory::Other,
            std::nullopt,
            std::nullopt,
            OutputFormatMode::KeepOriginal,
            ProcessingStatus::ready(),
            std::nullopt,
            std::nullopt};
}

} // namespace

class OutputDestinationTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString out(const QString &relative = {}) const
    {
        return m_dir.filePath(QStringLiteral("out")) +
               (relative.isEmpty() ? QString() : u'/' + relative);
    }

    void touch(const QString &path)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    // Destinations of a run over these items, in order.
    QStringList run(const QList<AudioFileItem> &items, const ProcessingSettings &settings,
                    const QString &root)
    {
        QSet<QString> reserved;
        QStringList paths;
        for (const AudioFileItem &entry : items)
            paths.append(OutputDestination::forItem(entry, settings, root, reserved).path);
        return paths;
    }

private Q_SLOTS:
    void sameNamesInOneRunGetNumbers()
    {
        const QStringList paths = run(
            {item(QStringLiteral("/src/a/Take.wav"), QStringLiteral("Take.wav")),
             item(QStringLiteral("/src/b/Take.wav"), QStringLiteral("Take.wav")),
             item(QStringLiteral("/src/c/Take.aiff"), QStringLiteral("Take.aiff"))},
            [] {
                ProcessingSettings s;
                s.outputFormatMode = OutputFormatMode::Wav;
                return s;
            }(),
            out());
        QCOMPARE(paths,
                 (QStringList{out(QStringLiteral("Take.wav")), out(QStringLiteral("Take 2.wav")),
                              out(QStringLiteral("Take 3.wav"))}));
    }

    void filesOnDiskAreNeverOverwritten()
    {
        touch(out(QStringLiteral("disk/Take.wav")));
        touch(out(QStringLiteral("disk/Take 2.wav")));
        QCOMPARE(FileNamingService::uniquePath(out(QStringLiteral("disk/Take.wav")), {}),
                 out(QStringLiteral("disk/Take 3.wav")));
        // A reserved path counts however it is spelled.
        QCOMPARE(FileNamingService::uniquePath(
                     out(QStringLiteral("disk/New.wav")),
                     {standardizedPath(out(QStringLiteral("disk/./New.wav")))}),
                 out(QStringLiteral("disk/New 2.wav")));
        touch(out(QStringLiteral("disk/README")));
        QCOMPARE(FileNamingService::uniquePath(out(QStringLiteral("disk/README")), {}),
                 out(QStringLiteral("disk/README 2")));
        QVERIFY(QFile::link(out(QStringLiteral("disk/nowhere")),
                            out(QStringLiteral("disk/Dangling.wav"))));
        QCOMPARE(FileNamingService::uniquePath(out(QStringLiteral("disk/Dangling.wav")), {}),
                 out(QStringLiteral("disk/Dangling 2.wav")));
    }

    void foldersAreMirroredAndNamesKept_data()
    {
        QTest::addColumn<QString>("relativePath");
        QTest::addColumn<OutputFormatMode>("mode");
        QTest::addColumn<bool>("addPrefix");
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("expected");

        QTest::newRow("sub-folders repeated")
            << "Drums/Kicks/Kick 01.wav" << OutputFormatMode::KeepOriginal << false << "LUFS_"
            << "Drums/Kicks/Kick 01.wav";
        QTest::newRow("new extension")
            << "Drums/Kick 01.wav" << OutputFormatMode::Mp3 << false << "LUFS_"
            << "Drums/Kick 01.mp3";
        QTest::newRow("prefix") << "Kick 01.wav" << OutputFormatMode::KeepOriginal << true
                                << "norm_"
                                << "norm_Kick 01.wav";
        QTest::newRow("prefix not twice")
            << "norm_Kick 01.wav" << OutputFormatMode::KeepOriginal << true << "norm_"
            << "norm_Kick 01.wav";
        QTest::newRow("prefix is case-sensitive")
            << "NORM_Kick.wav" << OutputFormatMode::KeepOriginal << true << "norm_"
            << "norm_NORM_Kick.wav";
        QTest::newRow("empty prefix") << "Kick.wav" << OutputFormatMode::KeepOriginal << true << ""
                                      << "Kick.wav";
        QTest::newRow("prefix cannot make folders")
            << "Kick.wav" << OutputFormatMode::KeepOriginal << true << "a/b_"
            << "a_b_Kick.wav";
        QTest::newRow("dots in the name")
            << "v1.2 final.aif" << OutputFormatMode::KeepOriginal << false << ""
            << "v1.2 final.aif";
        QTest::newRow("no way out of the output folder")
            << "../../etc/x.wav" << OutputFormatMode::Wav << false << ""
            << "etc/x.wav";
    }

    void foldersAreMirroredAndNamesKept()
    {
        QFETCH(QString, relativePath);
        QFETCH(OutputFormatMode, mode);
        QFETCH(bool, addPrefix);
        QFETCH(QString, prefix);
        QFETCH(QString, expected);
        ProcessingSettings settings;
        settings.outputFormatMode = mode;
        settings.addPrefix = addPrefix;
        settings.prefix = prefix;
        const QString name = relativePath.mid(relativePath.lastIndexOf(u'/') + 1);
        QSet<QString> reserved;
        const OutputDestination destination = OutputDestination::forItem(
            item(QStringLiteral("/src/") + name, relativePath), settings, out(), reserved);
        QCOMPARE(destination.path, out(expected));
        QVERIFY(reserved.contains(standardizedPath(destination.path)));
    }

    void neverTheSourceItself_data()
    {
        QTest::addColumn<bool>("skipExisting");
        QTest::newRow("writing all") << false;
        // The source is not an earlier run's output.
        QTest::newRow("skipping what is there") << true;
    }

    void neverTheSourceItself()
    {
        QFETCH(bool, skipExisting);
        // Output folder = the source's folder, same format: the source is taken, so the copy is
        // numbered.
        const QString source = m_dir.filePath(QStringLiteral("here/Take.wav"));
        touch(source);
        ProcessingSettings settings;
        settings.skipExisting = skipExisting;
        QSet<QString> reserved;
        const OutputDestination destination =
            OutputDestination::forItem(item(source, QStringLiteral("Take.wav")), settings,
                                       m_dir.filePath(QStringLiteral("here")), reserved);
        QCOMPARE(destination.path, m_dir.filePath(QStringLiteral("here/Take 2.wav")));
        QVERIFY(!destination.existing);
    }

    // Two items that an empty folder takes as "Take.wav" and "Take 2.wav":
    // each keeps the file found under its own such name, and only that.
    void skipExistingKeepsWhatAnEarlierRunWrote_data()
    {
        QTest::addColumn<QStringList>("onDisk");
        QTest::addColumn<QStringList>("kept");
        QTest::newRow("nothing") << QStringList() << QStringList();
        QTest::newRow("the first")
            << QStringList{QStringLiteral("Take.wav")} << QStringList{QStringLiteral("Take.wav")};
        QTest::newRow("the second") << QStringList{QStringLiteral("Take 2.wav")}
                                    << QStringList{QStringLiteral("Take 2.wav")};
        QTest::newRow("a cut-short write")
            << QStringList{QStringLiteral(".tbpart-1-boot-0-Take.wav")} << QStringList();
    }

    void skipExistingKeepsWhatAnEarlierRunWrote()
    {
        QFETCH(QStringList, onDisk);
        QFETCH(QStringList, kept);
        const QString root = out(QStringLiteral("skip-") + QLatin1String(QTest::currentDataTag()));
        for (const QString &name : onDisk)
            touch(root + u'/' + name);
        ProcessingSettings settings;
        settings.outputFormatMode = OutputFormatMode::Wav;
        settings.skipExisting = true;
        QSet<QString> reserved;
        QStringList names;
        QStringList existing;
        for (const AudioFileItem &entry :
             {item(QStringLiteral("/src/a/Take.wav"), QStringLiteral("Take.wav")),
              item(QStringLiteral("/src/b/Take.aiff"), QStringLiteral("Take.aiff"))}) {
            const OutputDestination destination =
                OutputDestination::forItem(entry, settings, root, reserved);
            names.append(fileNameOf(destination.path));
            if (destination.existing)
                existing.append(names.last());
        }
        QCOMPARE(names, (QStringList{QStringLiteral("Take.wav"), QStringLiteral("Take 2.wav")}));
        QCOMPARE(existing, kept);
    }
};

QTEST_GUILESS_MAIN(OutputDestinationTest)
#include "OutputDestinationTest.moc"

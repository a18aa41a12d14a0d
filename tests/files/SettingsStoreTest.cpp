// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/SettingsStore.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class SettingsStoreTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    std::shared_ptr<QSettings> file(const QString &name)
    {
        return std::make_shared<QSettings>(m_dir.filePath(name), QSettings::IniFormat);
    }

private Q_SLOTS:
    void everyChoiceComesBack()
    {
        ProcessingSettings chosen;
        chosen.normalizeLoudness = false;
        chosen.selectedPreset = *LoudnessPreset::builtIn(u"custom");
        chosen.customTargetLUFS = -18.5;
        chosen.truePeakCeiling = -2.3;
        chosen.outputFormatMode = OutputFormatMode::Mp3;
        chosen.sampleRateMode = SampleRateMode::Rate48000;
        chosen.bitDepth = OutputBitDepth::Float32;
        chosen.revealInFinderWhenComplete = false;
        chosen.addPrefix = true;
        chosen.prefix = QStringLiteral("Mix «1» ");
        chosen.outputFolder = QStringLiteral("/not/kept/here");
        SettingsStore(file(QStringLiteral("round.ini"))).save(chosen);
        SettingsStore(file(QStringLiteral("round.ini"))).saveWindowSize({1400, 900});

        // A new launch, a new file object: everything but the folder (stored elsewhere).
        const SettingsStore store(file(QStringLiteral("round.ini")));
        ProcessingSettings expected = chosen;
        expected.outputFolder.reset();
        QCOMPARE(store.restore(ProcessingSettings()), expected);
        QCOMPARE(store.windowSize(), std::optional(QSize(1400, 900)));
    }

    void nothingStoredOrNoFileGivesTheDefaults()
    {
        ProcessingSettings defaults;
        defaults.outputFolder = QStringLiteral("/kept");
        QCOMPARE(SettingsStore(file(QStringLiteral("empty.ini"))).restore(defaults), defaults);
        QCOMPARE(SettingsStore(nullptr).restore(defaults), defaults);
        QCOMPARE(SettingsStore(nullptr).windowSize(), std::nullopt);
        SettingsStore(nullptr).save(ProcessingSettings()); // no file, nothing to write
    }

    void valuesTheSettingsCannotTakeAreLeftOut_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("unknown preset") << "processing/preset" << QVariant(u"loud"_qs);
        QTest::newRow("target out of range") << "processing/customTargetLUFS" << QVariant(-3.0);
        QTest::newRow("target not a number") << "processing/customTargetLUFS" << QVariant(u"x"_qs);
        QTest::newRow("ceiling above 0") << "processing/truePeakCeiling" << QVariant(0.5);
        QTest::newRow("unknown format") << "processing/outputFormat" << QVariant(u"flac"_qs);
        QTest::newRow("unknown rate") << "processing/sampleRate" << QVariant(u"96000"_qs);
        QTest::newRow("unknown depth") << "processing/bitDepth" << QVariant(20);
        QTest::newRow("switch not a boolean") << "processing/addPrefix" << QVariant(u"yes"_qs);
        QTest::newRow("empty window") << "window/size" << QVariant(QSize(0, 0));
    }

    void valuesTheSettingsCannotTakeAreLeftOut()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, stored);
        const QString name = QString::fromLatin1(QTest::currentDataTag()) + u".ini";
        file(name)->setValue(key, stored);
        const SettingsStore store(file(name));
        QCOMPARE(store.restore(ProcessingSettings()), ProcessingSettings());
        QCOMPARE(store.windowSize(), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(SettingsStoreTest)
#include "SettingsStoreTest.moc"

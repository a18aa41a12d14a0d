// SPDX-License-Identifier: GPL-3.0-or-later
#include "LanguageFixture.h"
#include "localization/L.h"

#include <QSignalSpy>
#include <QTest>

class LanguageManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void storedChoice_data()
    {
        QTest::addColumn<std::optional<QString>>("stored");
        QTest::addColumn<AppLanguage>("selection");
        QTest::newRow("nothing stored") << std::optional<QString>() << AppLanguage::System;
        QTest::newRow("en") << std::optional(QStringLiteral("en")) << AppLanguage::En;
        QTest::newRow("ru") << std::optional(QStringLiteral("ru")) << AppLanguage::Ru;
        QTest::newRow("system") << std::optional(QStringLiteral("system")) << AppLanguage::System;
        QTest::newRow("upper case is not a choice")
            << std::optional(QStringLiteral("EN")) << AppLanguage::System;
        QTest::newRow("a language without a catalogue")
            << std::optional(QStringLiteral("de")) << AppLanguage::System;
    }

    void storedChoice()
    {
        QFETCH(std::optional<QString>, stored);
        QFETCH(AppLanguage, selection);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("preferences.ini"));
        if (stored) {
            QSettings settings(path, QSettings::IniFormat);
            settings.setValue(LanguageManager::key, *stored);
        }
        LanguageManager manager(std::make_unique<QSettings>(path, QSettings::IniFormat),
                                {QStringLiteral("en-US")});
        QCOMPARE(manager.selection(), selection);
    }

    void choiceIsStoredAtOnce()
    {
        LanguageFixture fixture;
        fixture.manager().setSelection(AppLanguage::Ru);
        QCOMPARE(
            QSettings(fixture.path(), QSettings::IniFormat).value(LanguageManager::key).toString(),
            QStringLiteral("ru"));
        fixture.manager().setSelection(AppLanguage::System);
        QCOMPARE(
            QSettings(fixture.path(), QSettings::IniFormat).value(LanguageManager::key).toString(),
            QStringLiteral("system"));
    }

    void systemLanguage_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<AppLanguage>("language");
        QTest::newRow("Russian first")
            << QStringList{QStringLiteral("ru-RU"), QStringLiteral("en-US")} << AppLanguage::Ru;
        QTest::newRow("English first, Russian region")
            << QStringList{QStringLiteral("en-RU"), QStringLiteral("ru")} << AppLanguage::En;
        QTest::newRow("upper case") << QStringList{QStringLiteral("RU")} << AppLanguage::Ru;
        QTest::newRow("another language first")
            << QStringList{QStringLiteral("de-DE"), QStringLiteral("ru")} << AppLanguage::En;
        QTest::newRow("no list") << QStringList() << AppLanguage::En;
    }

    void systemLanguage()
    {
        QFETCH(QStringList, preferred);
        QFETCH(AppLanguage, language);
        QCOMPARE(LanguageManager::languageOf(preferred), language);

        QTemporaryDir dir;
        LanguageManager manager(std::make_unique<QSettings>(dir.filePath(QStringLiteral("p.ini")),
                                                            QSettings::IniFormat),
                                preferred);
        QCOMPARE(manager.effectiveLanguage(), language);
        QCOMPARE(L::text(L::Files, 2), language == AppLanguage::Ru ? QStringLiteral("2 файла")
                                                                   : QStringLiteral("2 files"));
        // An explicit choice wins over the system either way.
        manager.setSelection(AppLanguage::En);
        QCOMPARE(L::text(L::Files, 2), QStringLiteral("2 files"));
        manager.setSelection(AppLanguage::Ru);
        QCOMPARE(L::text(L::Files, 2), QStringLiteral("2 файла"));
    }

    void languageChangeIsAnnouncedOnce()
    {
        LanguageFixture fixture({QStringLiteral("ru-RU")});
        LanguageManager &manager = fixture.manager();
        QSignalSpy changed(&manager, &LanguageManager::languageChanged);
        QSignalSpy selected(&manager, &LanguageManager::selectionChanged);
        manager.setSelection(AppLanguage::Ru); // System already spoke Russian
        QCOMPARE(changed.count(), 0);
        QCOMPARE(selected.count(), 1);
        manager.setSelection(AppLanguage::En);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(L::text(L::AppSubtitle),
                 QStringLiteral("Batch loudness normalization and audio conversion"));
        manager.setSelection(AppLanguage::En);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(selected.count(), 2);
    }

    // Qt's own texts follow: the file dialog's labels and the command line's
    // help are Russian when the interface is, English when it is.
    void qtsOwnTextsFollowTheLanguage()
    {
        LanguageFixture fixture({QStringLiteral("en-US")});
        const auto lookIn = [] { return QCoreApplication::translate("QFileDialog", "Look in:"); };
        const auto usage = [] {
            return QCoreApplication::translate("QCommandLineParser", "Usage: %1");
        };
        QCOMPARE(lookIn(), QStringLiteral("Look in:"));
        fixture.manager().setSelection(AppLanguage::Ru);
        QVERIFY2(lookIn() != u"Look in:" && !lookIn().isEmpty(), qPrintable(lookIn()));
        QVERIFY2(!usage().startsWith(u"Usage"), qPrintable(usage()));
        fixture.manager().setSelection(AppLanguage::En);
        QCOMPARE(lookIn(), QStringLiteral("Look in:"));
        QCOMPARE(usage(), QStringLiteral("Usage: %1"));
    }

    // Run by ctest with LANGUAGE=ru and without it.
    void followsTheSystemsPreferredLanguage()
    {
        const bool expectRussian =
            qEnvironmentVariable("LANGUAGE").startsWith(QStringLiteral("ru"));
        QCOMPARE(LanguageManager::systemIsRussian(), expectRussian);
        QTemporaryDir dir;
        LanguageManager manager(std::make_unique<QSettings>(dir.filePath(QStringLiteral("p.ini")),
                                                            QSettings::IniFormat),
                                QLocale::system().uiLanguages());
        QCOMPARE(manager.selection(), AppLanguage::System);
        QCOMPARE(L::text(L::ProcessFiles, 3), expectRussian ? QStringLiteral("Обработать 3 файла")
                                                            : QStringLiteral("Process 3 Files"));
    }
};

QTEST_GUILESS_MAIN(LanguageManagerTest)
#include "LanguageManagerTest.moc"

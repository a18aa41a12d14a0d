// SPDX-License-Identifier: GPL-3.0-or-later
// The catalogues themselves, and the manager that chooses, stores and installs them.
#include "LanguageFixture.h"
#include "localization/L.h"

#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QXmlStreamReader>

using Language = AppLanguage;

namespace {

struct Message
{
    QString source;
    bool counted = false;
    bool finished = true;
    QStringList forms;
};

QList<Message> readCatalogue(const QString &name)
{
    QFile file(QStringLiteral(TONBROOK_I18N_DIR "/") + name);
    file.open(QIODevice::ReadOnly); // else the reader fails below
    QList<Message> messages;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString element = xml.name().toString();
        if (element == u"message")
            messages.append(Message{.counted = xml.attributes().value(u"numerus"_qs) == u"yes"});
        else if (element == u"source")
            messages.last().source = xml.readElementText();
        else if (element == u"translation")
            messages.last().finished = xml.attributes().value(u"type"_qs).isEmpty();
        if (element == u"numerusform" || (element == u"translation" && !messages.last().counted))
            messages.last().forms.append(xml.readElementText());
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(name), qPrintable(xml.errorString()));
    return messages;
}

QStringList placeholders(const QString &text)
{
    QStringList found;
    for (const QRegularExpressionMatch &match : QRegularExpression(u"%[1-9n]"_qs).globalMatch(text))
        found.append(match.captured());
    found.sort();
    found.removeDuplicates();
    return found;
}

// Russian takes one form for 1, 21, 101; another for 2-4, 22-24; a third for
// 0, 5-20, 25-30, 111-114. Each group below holds counts of one form only, and
// the nouns a count is followed by take the same three forms.
const QList<QList<int>> russianForms = {
    {1, 21, 101, 1001}, {2, 3, 4, 22, 34, 104}, {0, 5, 11, 12, 14, 19, 25, 111, 112, 1000}};
const QList<QStringList> nouns = {{u"файл"_qs, u"файла"_qs, u"файлов"_qs},
                                  {u"папка"_qs, u"папки"_qs, u"папок"_qs},
                                  {u"объект"_qs, u"объекта"_qs, u"объектов"_qs}};

// With Russian installed: each count takes its group's form, with the noun inflected for it.
void checkRussianCounts(const Message &message)
{
    QCOMPARE(QSet<QString>(message.forms.cbegin(), message.forms.cend()).size(), 3);
    for (qsizetype form = 0; form < russianForms.size(); ++form) {
        for (int n : russianForms[form])
            QCOMPARE(
                QCoreApplication::translate("L", message.source.toUtf8().constData(), nullptr, n),
                QString(message.forms[form]).replace(u"%n"_qs, QString::number(n)));
        for (const QStringList &noun : nouns)
            if (message.forms.first().contains(u"%n " + noun.first()))
                QCOMPARE(QRegularExpression(u"%n ([^\\s:,.]+)"_qs)
                             .match(message.forms[form])
                             .captured(1),
                         noun[form]);
    }
}

} // namespace

class CatalogueTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    // English texts are their own source; only the counted ones carry forms.
    void everyTextTranslatedWithItsPlaceholders()
    {
        for (const auto &[name, forms] :
             {std::pair(u"tonbrook_ru.ts"_qs, 3), {u"tonbrook_en.ts"_qs, 2}}) {
            m_language.manager().setSelection(forms == 3 ? Language::Ru : Language::En);
            const QList<Message> messages = readCatalogue(name);
            QVERIFY(messages.size() > 100);
            for (const Message &message : messages) {
                if (forms == 2 && !message.counted)
                    continue;
                QVERIFY2(message.finished, qPrintable(name + u": " + message.source));
                QCOMPARE(message.forms.size(), message.counted ? forms : 1);
                for (const QString &form : message.forms) {
                    QVERIFY2(!form.isEmpty(), qPrintable(name + u": " + message.source));
                    QCOMPARE(placeholders(form), placeholders(message.source));
                }
                if (forms == 3 && message.counted)
                    checkRussianCounts(message);
            }
        }
    }

    // Whole sentences, where the verb agrees with the count too. "Done" is a file's status,
    // "Complete" the run's, and the sheet's button closes: one English word, three Russian.
    void wordsAgreeAndKeepTheirMeaning()
    {
        m_language.manager().setSelection(Language::Ru);
        QCOMPARE(L::text(L::FilesProcessed, 21), u"21 файл обработан"_qs);
        QCOMPARE(L::text(L::FilesReady, 21), u"21 файл готов"_qs);
        QCOMPARE(L::text(L::FilesLoaded, 304), u"304 файла загружены"_qs);
        QCOMPARE(L::text(L::ReachedTarget, 1), u"1 файл достиг целевой громкости"_qs);
        QCOMPARE(L::text(L::Converted, 11), u"11 файлов сконвертировано"_qs);
        QCOMPARE(L::bitDepthLabel(OutputBitDepth::Bit24), u"24 бит"_qs);
        const QStringList words = {L::statusName(ProcessingStatus::Kind::Done),
                                   L::text(L::Complete), L::text(L::CloseSheet),
                                   L::statusName(ProcessingStatus::Kind::Ready)};
        QCOMPARE(QSet<QString>(words.cbegin(), words.cend()).size(), words.size());
        QVERIFY(L::text(L::FilesReady, 5).contains(words.last().toLower()));
        QVERIFY(L::text(L::FilesProcessed, 5).contains(words.first().left(6).toLower()));
        m_language.manager().setSelection(Language::En);
        QCOMPARE(L::text(L::CloseSheet), L::statusName(ProcessingStatus::Kind::Done));
    }

    // Written at once, read by the next launch; only a new language in effect swaps catalogues.
    void aChoiceIsStoredAndAnnounced()
    {
        LanguageFixture fixture({u"ru-RU"_qs});
        LanguageManager &manager = fixture.manager();
        QCOMPARE(manager.selection(), Language::System);
        QSignalSpy changed(&manager, &LanguageManager::languageChanged);
        QSignalSpy selected(&manager, &LanguageManager::selectionChanged);
        const auto nextLaunch = [&] {
            return LanguageManager(
                       std::make_unique<QSettings>(fixture.path(), QSettings::IniFormat), {})
                .selection();
        };
        // The system spoke Russian already, so choosing it changes no text.
        for (const auto &[choice, value, changes, choices, files] :
             {std::tuple{Language::Ru, "ru", 0, 1, u"2 файла"_qs},
              {Language::En, "en", 1, 2, u"2 files"_qs},
              {Language::En, "en", 1, 2, u"2 files"_qs},
              {Language::System, "system", 2, 3, u"2 файла"_qs}}) {
            manager.setSelection(choice);
            QFile file(fixture.path()); // on disk at once, not only in this process
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY(file.readAll().contains(QByteArray("languageSelection=").append(value)));
            QCOMPARE(nextLaunch(), choice);
            QCOMPARE(changed.count(), changes);
            QCOMPARE(selected.count(), choices);
            QCOMPARE(L::text(L::Files, 2), files);
            // Qt's own texts (file dialogs, --help) follow.
            QCOMPARE(QCoreApplication::translate("QFileDialog", "Look in:") == u"Look in:",
                     files == u"2 files");
        }
        for (const char *unknown : {"EN", "de"}) {
            QSettings(fixture.path(), QSettings::IniFormat)
                .setValue(LanguageManager::key, QLatin1String(unknown));
            QCOMPARE(nextLaunch(), Language::System);
        }
    }

    // The first preferred language decides.
    void systemLanguage()
    {
        QCOMPARE(LanguageManager::languageOf({u"ru-RU"_qs, u"en-US"_qs}), Language::Ru);
        QCOMPARE(LanguageManager::languageOf({u"en-RU"_qs, u"ru"_qs}), Language::En);
        QCOMPARE(LanguageManager::languageOf({u"RU"_qs}), Language::Ru);
        QCOMPARE(LanguageManager::languageOf({u"de-RU"_qs, u"ru"_qs}), Language::En);
        QCOMPARE(LanguageManager::languageOf({}), Language::En);
    }

    // Run by ctest with LANGUAGE=ru and without it.
    void followsTheSystemsPreferredLanguage()
    {
        const bool russian = qEnvironmentVariable("LANGUAGE").startsWith(u"ru"_qs);
        QCOMPARE(LanguageManager::systemIsRussian(), russian);
        LanguageFixture fixture(QLocale::system().uiLanguages());
        QCOMPARE(L::text(L::ProcessFiles, 3),
                 russian ? u"Обработать 3 файла"_qs : u"Process 3 Files"_qs);
    }
};

QTEST_GUILESS_MAIN(CatalogueTest)
#include "CatalogueTest.moc"

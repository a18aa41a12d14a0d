// SPDX-License-Identifier: GPL-3.0-or-later
//
// The catalogues themselves: every Russian text finished, its placeholders kept,
// and every counted text agreeing with its number in all three Russian forms.
#include "LanguageFixture.h"
#include "localization/L.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

namespace {

struct Message
{
    QString source;
    QString comment;
    bool counted = false;
    bool finished = true;
    QStringList forms;
};

QList<Message> readCatalogue(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    QList<Message> messages;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"message") {
            messages.append(
                Message{.counted = xml.attributes().value(QLatin1String("numerus")) == u"yes"});
        } else if (xml.name() == u"source") {
            messages.last().source = xml.readElementText();
        } else if (xml.name() == u"comment") {
            messages.last().comment = xml.readElementText();
        } else if (xml.name() == u"translation") {
            messages.last().finished = xml.attributes().value(QLatin1String("type")).isEmpty();
            if (!messages.last().counted)
                messages.last().forms.append(xml.readElementText());
        } else if (xml.name() == u"numerusform") {
            messages.last().forms.append(xml.readElementText());
        }
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
    return messages;
}

QStringList placeholders(const QString &text)
{
    static const QRegularExpression marker(QStringLiteral("%[1-9n]"));
    QStringList found;
    for (const QRegularExpressionMatch &match : marker.globalMatch(text))
        found.append(match.captured());
    found.sort();
    found.removeDuplicates();
    return found;
}

QString catalogue(const char *name)
{
    return QStringLiteral(TONBROOK_I18N_DIR "/") + QLatin1String(name);
}

// Russian takes one form for 1, 21, 101; another for 2-4, 22-24; a third for
// 0, 5-20, 25-30, 111-114. Each group below holds counts of one form only.
const QList<QList<int>> russianForms = {
    {1, 21, 101, 1001}, {2, 3, 4, 22, 34, 104}, {0, 5, 11, 12, 14, 19, 25, 111, 112, 1000}};

// The nouns a count is followed by, in the same three forms.
const QList<QStringList> nouns = {{u"файл"_qs, u"файла"_qs, u"файлов"_qs},
                                  {u"папка"_qs, u"папки"_qs, u"папок"_qs},
                                  {u"объект"_qs, u"объекта"_qs, u"объектов"_qs}};

} // namespace

class CatalogueTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void everyTextTranslatedWithItsPlaceholders_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("forms");
        QTest::newRow("ru") << catalogue("tonbrook_ru.ts") << 3;
        // English texts are their own source; only the counted ones carry forms.
        QTest::newRow("en") << catalogue("tonbrook_en.ts") << 2;
    }

    void everyTextTranslatedWithItsPlaceholders()
    {
        QFETCH(QString, path);
        QFETCH(int, forms);
        const QList<Message> messages = readCatalogue(path);
        QVERIFY(messages.size() > 100);
        const bool english = path.endsWith(u"_en.ts");
        for (const Message &message : messages) {
            if (english && !message.counted)
                continue;
            QVERIFY2(message.finished, qPrintable(message.source));
            QCOMPARE(message.forms.size(), message.counted ? forms : 1);
            for (const QString &form : message.forms) {
                QVERIFY2(!form.isEmpty(), qPrintable(message.source));
                QCOMPARE(placeholders(form), placeholders(message.source));
            }
        }
    }

    // Generic over the catalogue: whatever the counted text, the count picks the
    // right form, and a noun after the count is inflected for it.
    void russianCountsAgree()
    {
        m_language.manager().setSelection(AppLanguage::Ru);
        int countedTexts = 0;
        for (const Message &message : readCatalogue(catalogue("tonbrook_ru.ts"))) {
            if (!message.counted)
                continue;
            ++countedTexts;
            QCOMPARE(QSet<QString>(message.forms.cbegin(), message.forms.cend()).size(), 3);
            const QStringList *noun = nullptr;
            for (const QStringList &candidate : nouns)
                if (message.forms.first().contains(u"%n " + candidate.first()))
                    noun = &candidate;
            for (qsizetype form = 0; form < russianForms.size(); ++form) {
                for (int n : russianForms[form]) {
                    const QByteArray source = message.source.toUtf8();
                    const QString text =
                        QCoreApplication::translate("L", source.constData(), nullptr, n);
                    const QString number = QString::number(n);
                    QCOMPARE(text, QString(message.forms[form]).replace(u"%n"_qs, number));
                    if (noun) {
                        const QRegularExpression inflected(u"(^|\\s)"_qs + number + u' ' +
                                                           noun->at(form) + u"($|[\\s:,.])"_qs);
                        QVERIFY2(inflected.match(text).hasMatch(), qPrintable(text));
                    }
                }
            }
        }
        QVERIFY(countedTexts >= 10);
    }

    // A handful of whole sentences: the verb agrees too, and English stays as it was.
    void countedSentences_data()
    {
        QTest::addColumn<L::Text>("key");
        QTest::addColumn<int>("n");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("russian");
        QTest::newRow("processed 1")
            << L::FilesProcessed << 1 << u"1 file processed"_qs << u"1 файл обработан"_qs;
        QTest::newRow("processed 21")
            << L::FilesProcessed << 21 << u"21 files processed"_qs << u"21 файл обработан"_qs;
        QTest::newRow("ready 21") << L::FilesReady << 21 << u"21 files ready"_qs
                                  << u"21 файл готов"_qs;
        QTest::newRow("loaded 304")
            << L::FilesLoaded << 304 << u"304 files loaded"_qs << u"304 файла загружены"_qs;
        QTest::newRow("reached 1") << L::ReachedTarget << 1 << u"1 reached target loudness"_qs
                                   << u"1 файл достиг целевой громкости"_qs;
        QTest::newRow("limited 1") << L::PeakLimited << 1 << u"1 limited by true peak"_qs
                                   << u"1 файл ограничен по true peak"_qs;
        QTest::newRow("converted 11")
            << L::Converted << 11 << u"11 converted"_qs << u"11 файлов сконвертировано"_qs;
        QTest::newRow("process 1")
            << L::ProcessFiles << 1 << u"Process 1 File"_qs << u"Обработать 1 файл"_qs;
    }

    void countedSentences()
    {
        QFETCH(L::Text, key);
        QFETCH(int, n);
        QFETCH(QString, english);
        QFETCH(QString, russian);
        m_language.manager().setSelection(AppLanguage::En);
        QCOMPARE(L::text(key, n), english);
        m_language.manager().setSelection(AppLanguage::Ru);
        QCOMPARE(L::text(key, n), russian);
    }

    // "Done" is a file's status, "Complete" the run's, and the sheet's button
    // closes: one English word for two of them, three Russian words.
    void oneWordPerMeaning()
    {
        m_language.manager().setSelection(AppLanguage::Ru);
        const QStringList words = {L::statusName(ProcessingStatus::Kind::Done),
                                   L::text(L::Complete), L::text(L::CloseSheet),
                                   L::statusName(ProcessingStatus::Kind::Ready)};
        QCOMPARE(QSet<QString>(words.cbegin(), words.cend()).size(), words.size());
        QVERIFY(L::text(L::FilesReady, 5).contains(words.last().toLower()));
        QVERIFY(L::text(L::FilesProcessed, 5).contains(words.first().left(6).toLower()));
        QCOMPARE(L::bitDepthLabel(OutputBitDepth::Bit24), u"24 бит"_qs);
        m_language.manager().setSelection(AppLanguage::En);
        QCOMPARE(L::text(L::CloseSheet), L::statusName(ProcessingStatus::Kind::Done));
    }
};

QTEST_GUILESS_MAIN(CatalogueTest)
#include "CatalogueTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every text the user reads, in both languages, against the wording it must have.
#include "LanguageFixture.h"
#include "engine/LoudnessPreset.h"
#include "localization/L.h"

#include <QTest>

#include <functional>

using Text = std::function<QString()>;

namespace {

// The Russian three-form rule, written out here as the yardstick for Qt's
// numerus forms.
QString russianNoun(int n, const char *one, const char *few, const char *many)
{
    const int abs = n < 0 ? -n : n;
    if (abs % 100 >= 11 && abs % 100 <= 14)
        return QString::fromUtf8(many);
    if (abs % 10 == 1)
        return QString::fromUtf8(one);
    if (abs % 10 >= 2 && abs % 10 <= 4)
        return QString::fromUtf8(few);
    return QString::fromUtf8(many);
}

QString ruFiles(int n)
{
    return QString::number(n) + u' ' + russianNoun(n, "файл", "файла", "файлов");
}

QString enFiles(int n)
{
    return QString::number(n) + (n == 1 ? QStringLiteral(" file") : QStringLiteral(" files"));
}

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

const int counts[] = {0, 1, 2, 3, 4, 5, 11, 12, 14, 21, 22, 25, 101, 111, 112, 1000};

} // namespace

class StringTableTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void texts_data()
    {
        QTest::addColumn<Text>("text");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("russian");

        const auto row = [](const char *name, Text text, const char *en, const char *ru) {
            QTest::newRow(name) << text << u(en) << u(ru);
        };
        row("appSubtitle", L::appSubtitle, "Batch loudness normalization and audio conversion",
            "Пакетная нормализация громкости и конвертация аудио");
        row("processingComplete", L::processingComplete, "Processing Complete",
            "Обработка завершена");
        row("revealOutputFolder", L::revealOutputFolder, "Reveal Output Folder",
            "Открыть папку вывода");
        row("processNewFiles", L::processNewFiles, "Process New Files", "Обработать новые файлы");
        row("panelSelectFiles", L::panelSelectFiles, "Select audio files to add to the queue",
            "Выберите аудиофайлы для добавления в очередь");
        row("panelSelectFolder", L::panelSelectFolder, "Select a folder to scan for audio files",
            "Выберите папку для поиска аудиофайлов");
        row("panelChooseDestination", L::panelChooseDestination,
            "Choose where prepared audio will be saved",
            "Выберите, куда сохранять подготовленное аудио");
        row("dropHere", L::dropHere, "Drop audio files or folders here",
            "Перетащите аудиофайлы или папки сюда");
        row("individualFiles", L::individualFiles, "Individual files", "Отдельные файлы");
        row("analyzeLoudness", L::analyzeLoudness, "Analyze Loudness", "Анализ громкости");
        row("noOutputFolder", L::noOutputFolder, "No output folder selected",
            "Папка вывода не выбрана");
        row("normalizeLoudness", L::normalizeLoudness, "Normalize loudness",
            "Нормализовать громкость");
        row("truePeakCeiling", L::truePeakCeiling, "True Peak Ceiling", "Потолок True Peak");
        row("noFolderSelected", L::noFolderSelected, "No folder selected", "Папка не выбрана");
        row("revealWhenComplete", L::revealWhenComplete, "Reveal in file manager when complete",
            "Открыть в файловом менеджере по завершении");
        row("noFilesInQueue", L::noFilesInQueue, "No files in queue", "Очередь пуста");
        row("removeFromQueue", L::removeFromQueue, "Remove from queue", "Убрать из очереди");
        row("warnInsideSource", L::warnInsideSource,
            "The output folder overlaps your imported files. Exports will be kept separate, but "
            "choosing a "
            "folder outside the source is recommended.",
            "Папка вывода пересекается с импортированными файлами. Экспорт останется отдельным, но "
            "рекомендуется выбрать папку вне источника.");
        row("warnNotWritable", L::warnNotWritable,
            "Tonbrook can't write to this folder. Choose a different destination.",
            "Tonbrook не может писать в эту папку. Выберите другое назначение.");
        row("supportMenuItem", L::supportMenuItem, "Support the project", "Поддержать проект");
        row("supportTitle", L::supportTitle, "Thank you for using Tonbrook",
            "Спасибо, что пользуетесь Tonbrook");
        row("supportBody", L::supportBody,
            "Tonbrook is a free tool by Quillmere Tools. If it helps your work, you can support "
            "its development "
            "with a tip or by subscribing to the channel. It's entirely optional \xe2\x80\x94 and "
            "it helps new "
            "tools get made.",
            "Tonbrook — бесплатный инструмент от Quillmere Tools. Если он помогает вам в работе, "
            "вы можете "
            "поддержать разработку чаевыми или подпиской на канал. Это полностью добровольно и "
            "помогает "
            "выпускать новые инструменты.");
        row("supportChannelButton", L::supportChannelButton, "Subscribe to channel",
            "Подписаться на канал");

        const std::pair<const char *, const char *> presets[] = {
            {"Theatre Ambience", "Театральная атмосфера"},
            {"Active Ambience", "Активная атмосфера"},
            {"Music / Playback", "Музыка / Воспроизведение"},
            {"Voice / Dialogue", "Голос / Диалог"},
            {"Podcast", "Подкаст"},
            {"Streaming", "Стриминг"},
            {"Custom", "Свой"}};
        for (int i = 0; i < 7; ++i) {
            const LoudnessPreset preset = LoudnessPreset::builtIn().at(i);
            QTest::addRow("preset %s", qPrintable(preset.id))
                << Text([preset] { return preset.localizedName(); }) << u(presets[i].first)
                << u(presets[i].second);
        }
        row(
            "label streaming",
            [] { return LoudnessPreset::builtIn(u"streaming")->localizedDisplayLabel(); },
            "Streaming -14 LUFS", "Стриминг -14 LUFS");
        row(
            "label custom",
            [] { return LoudnessPreset::builtIn(u"custom")->localizedDisplayLabel(); }, "Custom",
            "Свой");
        row(
            "preserve original",
            [] { return L::sampleRateLabel(SampleRateMode::PreserveOriginal); },
            "Preserve original", "Как в оригинале");
        row(
            "44.1 kHz", [] { return L::sampleRateLabel(SampleRateMode::Rate44100); }, "44.1 kHz",
            "44.1 kHz");
        row("sample rate heading", L::sampleRateHeading, "Sample Rate", "Частота дискретизации");
        row("bit depth heading", L::bitDepthHeading, "Bit Depth", "Битность");
        row("output format heading", L::outputFormatHeading, "Output Format", "Формат вывода");

        using K = ProcessingStatus::Kind;
        const std::tuple<K, const char *, const char *> statuses[] = {
            {K::Ready, "Ready", "Готов"},
            {K::Analyzing, "Analyzing", "Анализ"},
            {K::Processing, "Processing", "Обработка"},
            {K::Done, "Done", "Готово"},
            {K::Warning, "Warning", "Внимание"},
            {K::Failed, "Failed", "Ошибка"},
            {K::Cancelled, "Cancelled", "Отменено"}};
        for (const auto &[kind, en, ru] : statuses)
            QTest::addRow("status %s", en)
                << Text([kind = kind] { return L::statusName(kind); }) << u(en) << u(ru);

        row("selectFiles", L::selectFiles, "Select Files", "Выбрать файлы");
        row("selectFolder", L::selectFolder, "Select Folder", "Выбрать папку");
        row("addFiles", L::addFiles, "Add Files", "Добавить файлы");
        row("addFolder", L::addFolder, "Add Folder", "Добавить папку");
        row("removeSelected", L::removeSelected, "Remove Selected", "Убрать выбранные");
        row("clearQueue", L::clearQueue, "Clear Queue", "Очистить очередь");
        row("columnFile", L::columnFile, "FILE", "ФАЙЛ");
        row("columnSource", L::columnSource, "SOURCE", "ИСТОЧНИК");
        row("columnLoudness", L::columnLoudness, "LOUDNESS", "ГРОМКОСТЬ");
        row("columnOutput", L::columnOutput, "OUTPUT", "ВЫВОД");
        row("columnStatus", L::columnStatus, "STATUS", "СТАТУС");
        row("selectAll", L::selectAll, "Select all", "Выбрать все");
        row("processingTitle", L::processingTitle, "Processing", "Обработка");
        row("cancel", L::cancel, "Cancel", "Отмена");
        row("exportReport", L::exportReport, "Export Report", "Экспорт отчёта");
        row("details", L::details, "Details", "Подробности");
        row("done", L::done, "Done", "Готово");
        row("close", L::close, "Close", "Закрыть");
        row("version", L::version, "Version", "Версия");
        row("licenses", L::licenses, "Licenses", "Лицензии");
        row("viewLicense", L::viewLicense, "View license", "Показать лицензию");
        row("hideLicense", L::hideLicense, "Hide license", "Скрыть лицензию");
        row("leaveTip", L::leaveTip, "Leave a tip", "Оставить чаевые");
        row("choose", L::choose, "Choose", "Выбрать");
        row("processFilesNone", L::processFilesNone, "Process Files", "Обработать файлы");
        row("complete", L::complete, "Complete", "Готово");

        const QString f = QStringLiteral("Kick \u201cA\u201d.wav");
        const auto message = [&f](const char *name, QString (*build)(const QString &),
                                  const char *en, const char *ru) {
            QTest::newRow(name) << Text([build, f] { return build(f); }) << u(en).arg(f)
                                << u(ru).arg(f);
        };
        message("damaged", L::damagedMessage,
                "Could not process \xe2\x80\x9c%1\xe2\x80\x9d.\nThe file may be damaged or use an "
                "unsupported codec.",
                "Не удалось обработать «%1».\nФайл может быть повреждён или использовать "
                "неподдерживаемый кодек.");
        message("disk full", L::diskFullMessage,
                "Could not save \xe2\x80\x9c%1\xe2\x80\x9d.\nThe disk is full \xe2\x80\x94 free up "
                "space and try again.",
                "Не удалось сохранить «%1».\nДиск заполнен — освободите место и повторите.");
        message("permission", L::permissionMessage,
                "Could not write \xe2\x80\x9c%1\xe2\x80\x9d.\nTonbrook doesn\xe2\x80\x99t have "
                "permission for that folder.",
                "Не удалось записать «%1».\nУ Tonbrook нет прав на эту папку.");
        message("write failed", L::writeFailedMessage,
                "Could not save \xe2\x80\x9c%1\xe2\x80\x9d.\nCheck that the output folder is "
                "writable and has enough "
                "free space.",
                "Не удалось сохранить «%1».\nПроверьте, что папка вывода доступна для записи и на "
                "диске есть место.");
        message("same file", L::sameFileSkippedMessage,
                "Skipped \xe2\x80\x9c%1\xe2\x80\x9d to avoid overwriting the original "
                "file.\nChoose an output folder "
                "outside the source.",
                "Файл «%1» пропущен, чтобы не перезаписать оригинал.\nВыберите папку вывода вне "
                "источника.");
        row("cancelled message", L::cancelledMessage, "Cancelled.", "Отменено.");
    }

    void texts()
    {
        QFETCH(Text, text);
        QFETCH(QString, english);
        QFETCH(QString, russian);
        m_language.manager().setSelection(AppLanguage::En);
        QCOMPARE(text(), english);
        m_language.manager().setSelection(AppLanguage::Ru);
        QCOMPARE(text(), russian);
    }

    void countedTexts_data()
    {
        QTest::addColumn<Text>("text");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("russian");

        for (int n : counts) {
            const auto row = [n](const char *name, QString (*text)(int), QString en, QString ru) {
                QTest::addRow("%s(%d)", name, n) << Text([text, n] { return text(n); }) << en << ru;
            };
            const QString number = QString::number(n);
            row("files", L::files, enFiles(n), ruFiles(n));
            row("folders", L::folders, number + (n == 1 ? u(" folder") : u(" folders")),
                number + u' ' + russianNoun(n, "папка", "папки", "папок"));
            row("filesProcessed", L::filesProcessed, enFiles(n) + u(" processed"),
                ruFiles(n) + u(" обработано"));
            row("filesLoaded", L::filesLoaded, enFiles(n) + u(" loaded"),
                ruFiles(n) + u(" загружено"));
            row("filesReady", L::filesReady, enFiles(n) + u(" ready"), ruFiles(n) + u(" готово"));
            // English capitalises the noun and knows only one and many; Russian uses all three
            // forms.
            row("processFiles", L::processFiles,
                u("Process ") + number + (n == 1 ? u(" File") : u(" Files")),
                u("Обработать ") + ruFiles(n));
            row("reachedTarget", L::reachedTarget, number + u(" reached target loudness"),
                number + u(" достигли целевой громкости"));
            row("converted", L::converted, number + u(" converted"),
                number + u(" сконвертировано"));
            row("peakLimited", L::peakLimited, number + u(" limited by true peak"),
                number + u(" ограничены по true peak"));
            row("failedCount", L::failedCount, number + u(" failed"), number + u(" с ошибкой"));
            row("added", L::added, number + u(" added"), number + u(" добавлено"));
            row("alreadyInQueue", L::alreadyInQueue, number + u(" already in queue"),
                number + u(" уже в очереди"));
            row("unsupportedIgnored", L::unsupportedIgnored, number + u(" unsupported ignored"),
                number + u(" неподдерживаемых пропущено"));
            row("processSelected", L::processSelected, u("Process Selected (") + number + u(")"),
                u("Обработать выбранные (") + number + u(")"));
            const QString total = QString::number(n + 7);
            const auto pair = [&](const char *name, QString (*text)(int, int), QString en,
                                  QString ru) {
                QTest::addRow("%s(%d, %d)", name, n, n + 7)
                    << Text([text, n] { return text(n, n + 7); }) << en << ru;
            };
            // A slash while analysing, words while processing; no noun in Russian "of files".
            pair("analyzingProgress", L::analyzingProgress,
                 u("Analyzing loudness\xe2\x80\xa6 ") + number + u'/' + total,
                 u("Анализ громкости\xe2\x80\xa6 ") + number + u'/' + total);
            pair("processingProgress", L::processingProgress,
                 u("Processing ") + number + u(" of ") + total,
                 u("Обработка ") + number + u(" из ") + total);
            pair("ofFiles", L::ofFiles, number + u(" of ") + total + u(" files"),
                 number + u(" из ") + total);
        }
    }

    void countedTexts() { texts(); }
};

QTEST_GUILESS_MAIN(StringTableTest)
#include "StringTableTest.moc"

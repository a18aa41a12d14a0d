// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every text the user reads, in both languages, against the wording it must have.
#include "LanguageFixture.h"
#include "localization/L.h"
#include "model/LoudnessPreset.h"

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
        row(
            "appSubtitle", [] { return L::text(L::AppSubtitle); },
            "Batch loudness normalization and audio conversion",
            "Пакетная нормализация громкости и конвертация аудио");
        row(
            "processingComplete", [] { return L::text(L::ProcessingComplete); },
            "Processing Complete", "Обработка завершена");
        row(
            "revealOutputFolder", [] { return L::text(L::RevealOutputFolder); },
            "Reveal Output Folder", "Открыть папку вывода");
        row(
            "processNewFiles", [] { return L::text(L::ProcessNewFiles); }, "Process New Files",
            "Обработать новые файлы");
        row(
            "panelSelectFiles", [] { return L::text(L::PanelSelectFiles); },
            "Select audio files to add to the queue",
            "Выберите аудиофайлы для добавления в очередь");
        row(
            "panelSelectFolder", [] { return L::text(L::PanelSelectFolder); },
            "Select a folder to scan for audio files", "Выберите папку для поиска аудиофайлов");
        row(
            "panelChooseDestination", [] { return L::text(L::PanelChooseDestination); },
            "Choose where prepared audio will be saved",
            "Выберите, куда сохранять подготовленное аудио");
        row(
            "dropHere", [] { return L::text(L::DropHere); }, "Drop audio files or folders here",
            "Перетащите аудиофайлы или папки сюда");
        row(
            "individualFiles", [] { return L::text(L::IndividualFiles); }, "Individual files",
            "Отдельные файлы");
        row(
            "analyzeLoudness", [] { return L::text(L::AnalyzeLoudness); }, "Analyze Loudness",
            "Анализ громкости");
        row(
            "noOutputFolder", [] { return L::text(L::NoOutputFolder); },
            "No output folder selected", "Папка вывода не выбрана");
        row(
            "normalizeLoudness", [] { return L::text(L::NormalizeLoudness); }, "Normalize loudness",
            "Нормализовать громкость");
        row(
            "truePeakCeiling", [] { return L::text(L::TruePeakCeiling); }, "True Peak Ceiling",
            "Потолок True Peak");
        row(
            "noFolderSelected", [] { return L::text(L::NoFolderSelected); }, "No folder selected",
            "Папка не выбрана");
        row(
            "revealWhenComplete", [] { return L::text(L::RevealWhenComplete); },
            "Reveal in file manager when complete", "Открыть в файловом менеджере по завершении");
        row(
            "noFilesInQueue", [] { return L::text(L::NoFilesInQueue); }, "No files in queue",
            "Очередь пуста");
        row(
            "removeFromQueue", [] { return L::text(L::RemoveFromQueue); }, "Remove from queue",
            "Убрать из очереди");
        row(
            "warnInsideSource", [] { return L::text(L::WarnInsideSource); },
            "The output folder overlaps your imported files. Exports will be kept separate, but "
            "choosing a "
            "folder outside the source is recommended.",
            "Папка вывода пересекается с импортированными файлами. Экспорт останется отдельным, но "
            "рекомендуется выбрать папку вне источника.");
        row(
            "warnNotWritable", [] { return L::text(L::WarnNotWritable); },
            "Tonbrook can't write to this folder. Choose a different destination.",
            "Tonbrook не может писать в эту папку. Выберите другое назначение.");
        row(
            "supportMenuItem", [] { return L::text(L::SupportMenuItem); }, "Support the project",
            "Поддержать проект");
        row(
            "supportTitle", [] { return L::text(L::SupportTitle); }, "Thank you for using Tonbrook",
            "Спасибо, что пользуетесь Tonbrook");
        row(
            "supportBody", [] { return L::text(L::SupportBody); },
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
        row(
            "supportChannelButton", [] { return L::text(L::SupportChannelButton); },
            "Subscribe to channel", "Подписаться на канал");

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
                << Text([preset] { return L::presetName(preset); }) << u(presets[i].first)
                << u(presets[i].second);
        }
        row(
            "label streaming",
            [] { return L::presetLabel(*LoudnessPreset::builtIn(u"streaming")); },
            "Streaming -14 LUFS", "Стриминг -14 LUFS");
        row(
            "label custom", [] { return L::presetLabel(*LoudnessPreset::builtIn(u"custom")); },
            "Custom", "Свой");
        row(
            "preserve original",
            [] { return L::sampleRateLabel(SampleRateMode::PreserveOriginal); },
            "Preserve original", "Как в оригинале");
        row(
            "44.1 kHz", [] { return L::sampleRateLabel(SampleRateMode::Rate44100); }, "44.1 kHz",
            "44.1 kHz");
        row(
            "sample rate heading", [] { return L::text(L::SampleRateHeading); }, "Sample Rate",
            "Частота дискретизации");
        row(
            "bit depth heading", [] { return L::text(L::BitDepthHeading); }, "Bit Depth",
            "Битность");
        row(
            "output format heading", [] { return L::text(L::OutputFormatHeading); },
            "Output Format", "Формат вывода");

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

        row(
            "selectFiles", [] { return L::text(L::SelectFiles); }, "Select Files", "Выбрать файлы");
        row(
            "selectFolder", [] { return L::text(L::SelectFolder); }, "Select Folder",
            "Выбрать папку");
        row(
            "addFiles", [] { return L::text(L::AddFiles); }, "Add Files", "Добавить файлы");
        row(
            "addFolder", [] { return L::text(L::AddFolder); }, "Add Folder", "Добавить папку");
        row(
            "removeSelected", [] { return L::text(L::RemoveSelected); }, "Remove Selected",
            "Убрать выбранные");
        row(
            "clearQueue", [] { return L::text(L::ClearQueue); }, "Clear Queue", "Очистить очередь");
        row(
            "columnFile", [] { return L::text(L::ColumnFile); }, "FILE", "ФАЙЛ");
        row(
            "columnSource", [] { return L::text(L::ColumnSource); }, "SOURCE", "ИСТОЧНИК");
        row(
            "columnLoudness", [] { return L::text(L::ColumnLoudness); }, "LOUDNESS", "ГРОМКОСТЬ");
        row(
            "columnOutput", [] { return L::text(L::ColumnOutput); }, "OUTPUT", "ВЫВОД");
        row(
            "columnStatus", [] { return L::text(L::ColumnStatus); }, "STATUS", "СТАТУС");
        row(
            "selectAll", [] { return L::text(L::SelectAll); }, "Select all", "Выбрать все");
        row(
            "processingTitle", [] { return L::text(L::ProcessingTitle); }, "Processing",
            "Обработка");
        row(
            "cancel", [] { return L::text(L::Cancel); }, "Cancel", "Отмена");
        row(
            "exportReport", [] { return L::text(L::ExportReport); }, "Export Report",
            "Экспорт отчёта");
        row(
            "details", [] { return L::text(L::Details); }, "Details", "Подробности");
        row(
            "done", [] { return L::text(L::Done); }, "Done", "Готово");
        row(
            "close", [] { return L::text(L::Close); }, "Close", "Закрыть");
        row(
            "version", [] { return L::text(L::Version); }, "Version", "Версия");
        row(
            "licenses", [] { return L::text(L::Licenses); }, "Licenses", "Лицензии");
        row(
            "viewLicense", [] { return L::text(L::ViewLicense); }, "View license",
            "Показать лицензию");
        row(
            "hideLicense", [] { return L::text(L::HideLicense); }, "Hide license",
            "Скрыть лицензию");
        row(
            "leaveTip", [] { return L::text(L::LeaveTip); }, "Leave a tip", "Оставить чаевые");
        row(
            "choose", [] { return L::text(L::Choose); }, "Choose", "Выбрать");
        row(
            "processFilesNone", [] { return L::text(L::ProcessFilesNone); }, "Process Files",
            "Обработать файлы");
        row(
            "complete", [] { return L::text(L::Complete); }, "Complete", "Готово");

        const QString f = QStringLiteral("Kick \u201cA\u201d.wav");
        const auto message = [&f](const char *name, L::Text key, const char *en, const char *ru) {
            QTest::newRow(name) << Text([key, f] { return L::text(key, f); }) << u(en).arg(f)
                                << u(ru).arg(f);
        };
        message("damaged", L::DamagedMessage,
                "Could not process \xe2\x80\x9c%1\xe2\x80\x9d.\nThe file may be damaged or use an "
                "unsupported codec.",
                "Не удалось обработать «%1».\nФайл может быть повреждён или использовать "
                "неподдерживаемый кодек.");
        message("disk full", L::DiskFullMessage,
                "Could not save \xe2\x80\x9c%1\xe2\x80\x9d.\nThe disk is full \xe2\x80\x94 free up "
                "space and try again.",
                "Не удалось сохранить «%1».\nДиск заполнен — освободите место и повторите.");
        message("permission", L::PermissionMessage,
                "Could not write \xe2\x80\x9c%1\xe2\x80\x9d.\nTonbrook doesn\xe2\x80\x99t have "
                "permission for that folder.",
                "Не удалось записать «%1».\nУ Tonbrook нет прав на эту папку.");
        message("write failed", L::WriteFailedMessage,
                "Could not save \xe2\x80\x9c%1\xe2\x80\x9d.\nCheck that the output folder is "
                "writable and has enough "
                "free space.",
                "Не удалось сохранить «%1».\nПроверьте, что папка вывода доступна для записи и на "
                "диске есть место.");
        message("same file", L::SameFileSkippedMessage,
                "Skipped \xe2\x80\x9c%1\xe2\x80\x9d to avoid overwriting the original "
                "file.\nChoose an output folder "
                "outside the source.",
                "Файл «%1» пропущен, чтобы не перезаписать оригинал.\nВыберите папку вывода вне "
                "источника.");
        row(
            "cancelled message", [] { return L::text(L::CancelledMessage); }, "Cancelled.",
            "Отменено.");
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
            const auto row = [n](const char *name, L::Text key, QString en, QString ru) {
                QTest::addRow("%s(%d)", name, n)
                    << Text([key, n] { return L::text(key, n); }) << en << ru;
            };
            const QString number = QString::number(n);
            row("files", L::Files, enFiles(n), ruFiles(n));
            row("folders", L::Folders, number + (n == 1 ? u(" folder") : u(" folders")),
                number + u' ' + russianNoun(n, "папка", "папки", "папок"));
            row("filesProcessed", L::FilesProcessed, enFiles(n) + u(" processed"),
                ruFiles(n) + u(" обработано"));
            row("filesLoaded", L::FilesLoaded, enFiles(n) + u(" loaded"),
                ruFiles(n) + u(" загружено"));
            row("filesReady", L::FilesReady, enFiles(n) + u(" ready"), ruFiles(n) + u(" готово"));
            // English capitalises the noun and knows only one and many; Russian uses all three
            // forms.
            row("processFiles", L::ProcessFiles,
                u("Process ") + number + (n == 1 ? u(" File") : u(" Files")),
                u("Обработать ") + ruFiles(n));
            row("reachedTarget", L::ReachedTarget, number + u(" reached target loudness"),
                number + u(" достигли целевой громкости"));
            row("converted", L::Converted, number + u(" converted"),
                number + u(" сконвертировано"));
            row("peakLimited", L::PeakLimited, number + u(" limited by true peak"),
                number + u(" ограничены по true peak"));
            row("failedCount", L::FailedCount, number + u(" failed"), number + u(" с ошибкой"));
            row("added", L::Added, number + u(" added"), number + u(" добавлено"));
            row("alreadyInQueue", L::AlreadyInQueue, number + u(" already in queue"),
                number + u(" уже в очереди"));
            row("processSelected", L::ProcessSelected, u("Process Selected (") + number + u(")"),
                u("Обработать выбранные (") + number + u(")"));
            const QString total = QString::number(n + 7);
            const auto pair = [&](const char *name, L::Text key, QString en, QString ru) {
                QTest::addRow("%s(%d, %d)", name, n, n + 7)
                    << Text([key, n] { return L::text(key, n, n + 7); }) << en << ru;
            };
            // A slash while analysing, words while processing; no noun in Russian "of files".
            pair("analyzingProgress", L::AnalyzingProgress,
                 u("Analyzing loudness\xe2\x80\xa6 ") + number + u'/' + total,
                 u("Анализ громкости\xe2\x80\xa6 ") + number + u'/' + total);
            pair("processingProgress", L::ProcessingProgress,
                 u("Processing ") + number + u(" of ") + total,
                 u("Обработка ") + number + u(" из ") + total);
            pair("ofFiles", L::OfFiles, number + u(" of ") + total + u(" files"),
                 number + u(" из ") + total);
        }
    }

    void countedTexts() { texts(); }
};

QTEST_GUILESS_MAIN(StringTableTest)
#include "StringTableTest.moc"

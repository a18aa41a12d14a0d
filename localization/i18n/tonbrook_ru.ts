<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU">
<context>
    <name>L</name>
    <message>
        <source>Batch loudness normalization and audio conversion</source>
        <translation>Пакетная нормализация громкости и конвертация аудио</translation>
    </message>
    <message>
        <source>Processing Complete</source>
        <translation>Обработка завершена</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n файл</numerusform>
            <numerusform>%n файла</numerusform>
            <numerusform>%n файлов</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n folder(s)</source>
        <translation>
            <numerusform>%n папка</numerusform>
            <numerusform>%n папки</numerusform>
            <numerusform>%n папок</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) processed</source>
        <translation>
            <numerusform>%n файл обработан</numerusform>
            <numerusform>%n файла обработаны</numerusform>
            <numerusform>%n файлов обработано</numerusform>
        </translation>
    </message>
    <message>
        <source>Reveal Output Folder</source>
        <translation>Открыть папку вывода</translation>
    </message>
    <message>
        <source>Process New Files</source>
        <translation>Обработать новые файлы</translation>
    </message>
    <message>
        <source>Select audio files to add to the queue</source>
        <translation>Выберите аудиофайлы для добавления в очередь</translation>
    </message>
    <message>
        <source>Select a folder to scan for audio files</source>
        <translation>Выберите папку для поиска аудиофайлов</translation>
    </message>
    <message>
        <source>Choose where prepared audio will be saved</source>
        <translation>Выберите, куда сохранять подготовленное аудио</translation>
    </message>
    <message>
        <source>Drop audio files or folders here</source>
        <translation>Перетащите аудиофайлы или папки сюда</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) loaded</source>
        <translation>
            <numerusform>%n файл загружен</numerusform>
            <numerusform>%n файла загружены</numerusform>
            <numerusform>%n файлов загружено</numerusform>
        </translation>
    </message>
    <message>
        <source>Individual files</source>
        <translation>Отдельные файлы</translation>
    </message>
    <message>
        <source>Analyze Loudness</source>
        <translation>Анализ громкости</translation>
    </message>
    <message numerus="yes">
        <source>Process %n File(s)</source>
        <translation>
            <numerusform>Обработать %n файл</numerusform>
            <numerusform>Обработать %n файла</numerusform>
            <numerusform>Обработать %n файлов</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) ready</source>
        <translation>
            <numerusform>%n файл готов</numerusform>
            <numerusform>%n файла готовы</numerusform>
            <numerusform>%n файлов готовы</numerusform>
        </translation>
    </message>
    <message>
        <source>Analyzing loudness… %1/%2</source>
        <translation>Анализ громкости… %1/%2</translation>
    </message>
    <message>
        <source>Processing %1 of %2</source>
        <translation>Обработка %1 из %2</translation>
    </message>
    <message>
        <source>No output folder selected</source>
        <translation>Папка вывода не выбрана</translation>
    </message>
    <message>
        <source>Normalize loudness</source>
        <translation>Нормализовать громкость</translation>
    </message>
    <message>
        <source>True Peak Ceiling</source>
        <translation>Потолок True Peak</translation>
    </message>
    <message>
        <source>No folder selected</source>
        <translation>Папка не выбрана</translation>
    </message>
    <message>
        <source>Reveal in file manager when complete</source>
        <translation>Открыть в файловом менеджере по завершении</translation>
    </message>
    <message>
        <source>No files in queue</source>
        <translation>Очередь пуста</translation>
    </message>
    <message>
        <source>Remove from queue</source>
        <translation>Убрать из очереди</translation>
    </message>
    <message>
        <source>Process Selected (%1)</source>
        <translation>Обработать выбранные (%1)</translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation>%1 из %2</translation>
    </message>
    <message>
        <source>The output folder overlaps your imported files. Exports will be kept separate, but choosing a folder outside the source is recommended.</source>
        <translation>Папка вывода пересекается с импортированными файлами. Экспорт останется отдельным, но рекомендуется выбрать папку вне источника.</translation>
    </message>
    <message>
        <source>Tonbrook can&apos;t write to this folder. Choose a different destination.</source>
        <translation>Tonbrook не может писать в эту папку. Выберите другое назначение.</translation>
    </message>
    <message>
        <source>Support the project</source>
        <translation>Поддержать проект</translation>
    </message>
    <message>
        <source>Thank you for using Tonbrook</source>
        <translation>Спасибо, что пользуетесь Tonbrook</translation>
    </message>
    <message>
        <source>Tonbrook is a free tool by Quillmere Tools. If it helps your work, you can support its development with a tip or by subscribing to the channel. It&apos;s entirely optional — and it helps new tools get made.</source>
        <translation>Tonbrook — бесплатный инструмент от Quillmere Tools. Если он помогает вам в работе, вы можете поддержать разработку чаевыми или подпиской на канал. Это полностью добровольно и помогает выпускать новые инструменты.</translation>
    </message>
    <message>
        <source>Subscribe to channel</source>
        <translation>Подписаться на канал</translation>
    </message>
    <message>
        <source>Theatre Ambience</source>
        <translation>Театральный фон</translation>
    </message>
    <message>
        <source>Active Ambience</source>
        <translation>Активный фон</translation>
    </message>
    <message>
        <source>Music / Playback</source>
        <translation>Музыка / Фонограмма</translation>
    </message>
    <message>
        <source>Voice / Dialogue</source>
        <translation>Голос / Диалог</translation>
    </message>
    <message>
        <source>Podcast</source>
        <translation>Подкаст</translation>
    </message>
    <message>
        <source>Streaming</source>
        <translation>Стриминг</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Свой</translation>
    </message>
    <message>
        <source>Preserve original</source>
        <translation>Как в оригинале</translation>
    </message>
    <message>
        <source>Keep original</source>
        <translation>Исходный формат</translation>
    </message>
    <message>
        <source>Sample Rate</source>
        <translation>Частота дискретизации</translation>
    </message>
    <message>
        <source>Bit Depth</source>
        <translation>Битность</translation>
    </message>
    <message>
        <source>Output Format</source>
        <translation>Формат вывода</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Готов</translation>
    </message>
    <message>
        <source>Analyzing</source>
        <translation>Анализ</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Внимание</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Отменено</translation>
    </message>
    <message>
        <source>Could not process “%1”.
The file may be damaged or use an unsupported codec.</source>
        <translation>Не удалось обработать «%1».
Файл может быть повреждён или использовать неподдерживаемый кодек.</translation>
    </message>
    <message>
        <source>Could not save “%1”.
The disk is full — free up space and try again.</source>
        <translation>Не удалось сохранить «%1».
Диск заполнен — освободите место и повторите.</translation>
    </message>
    <message>
        <source>Could not write “%1”.
Tonbrook doesn’t have permission for that folder.</source>
        <translation>Не удалось записать «%1».
У Tonbrook нет прав на эту папку.</translation>
    </message>
    <message>
        <source>Could not save “%1”.
Check that the output folder is writable and has enough free space.</source>
        <translation>Не удалось сохранить «%1».
Проверьте, что папка вывода доступна для записи и на диске есть место.</translation>
    </message>
    <message>
        <source>Skipped “%1” to avoid overwriting the original file.
Choose an output folder outside the source.</source>
        <translation>Файл «%1» пропущен, чтобы не перезаписать оригинал.
Выберите папку вывода вне источника.</translation>
    </message>
    <message>
        <source>Cancelled.</source>
        <translation>Отменено.</translation>
    </message>
    <message>
        <source>Could not save the report: %1</source>
        <translation>Не удалось сохранить отчёт: %1</translation>
    </message>
    <message>
        <source>Select Files</source>
        <translation>Выбрать файлы</translation>
    </message>
    <message>
        <source>Select Folder</source>
        <translation>Выбрать папку</translation>
    </message>
    <message>
        <source>Add Files</source>
        <translation>Добавить файлы</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Добавить папку</translation>
    </message>
    <message>
        <source>Remove Selected</source>
        <translation>Убрать выбранные</translation>
    </message>
    <message>
        <source>Clear Queue</source>
        <translation>Очистить очередь</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>ФАЙЛ</translation>
    </message>
    <message>
        <source>SOURCE</source>
        <translation>ИСТОЧНИК</translation>
    </message>
    <message>
        <source>LOUDNESS</source>
        <translation>ГРОМКОСТЬ</translation>
    </message>
    <message>
        <source>OUTPUT</source>
        <translation>ВЫВОД</translation>
    </message>
    <message>
        <source>STATUS</source>
        <translation>СТАТУС</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Выбрать все</translation>
    </message>
    <message>
        <source>Processing</source>
        <translation>Обработка</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Export Report</source>
        <translation>Экспорт отчёта</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Подробности</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Обработан</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Версия</translation>
    </message>
    <message>
        <source>About</source>
        <translation>О программе</translation>
    </message>
    <message>
        <source>Licenses</source>
        <translation>Лицензии</translation>
    </message>
    <message>
        <source>View license</source>
        <translation>Показать лицензию</translation>
    </message>
    <message>
        <source>Hide license</source>
        <translation>Скрыть лицензию</translation>
    </message>
    <message>
        <source>Leave a tip</source>
        <translation>Оставить чаевые</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Язык</translation>
    </message>
    <message>
        <source>System</source>
        <translation>Системный</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Выбрать</translation>
    </message>
    <message>
        <source>Process Files</source>
        <translation>Обработать файлы</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Завершено</translation>
    </message>
    <message>
        <source>Audio files</source>
        <translation>Аудиофайлы</translation>
    </message>
    <message>
        <source>Measures audio files and writes them at one loudness, as the Tonbrook window does.</source>
        <translation>Измеряет аудиофайлы и записывает их с одной громкостью, как окно Tonbrook.</translation>
    </message>
    <message>
        <source>Usage: %1 [options] PATH...</source>
        <translation>Использование: %1 [параметры] ПУТЬ...</translation>
    </message>
    <message>
        <source>Output folder (required unless --analyze-only).</source>
        <translation>Папка вывода (обязательна, если не указан --analyze-only).</translation>
    </message>
    <message>
        <source>Loudness preset: %1.</source>
        <translation>Пресет громкости: %1.</translation>
    </message>
    <message>
        <source>Custom target loudness, -70 to -5; selects the custom preset.</source>
        <translation>Своя целевая громкость, от -70 до -5; выбирает пресет «Свой».</translation>
    </message>
    <message>
        <source>True-peak ceiling, -9 to 0 (default -1.0).</source>
        <translation>Потолок true peak, от -9 до 0 (по умолчанию -1.0).</translation>
    </message>
    <message>
        <source>Convert only; do not change the loudness.</source>
        <translation>Только конвертировать, не меняя громкость.</translation>
    </message>
    <message>
        <source>Output format: keepOriginal, wav, aiff, mp3, caf.</source>
        <translation>Формат вывода: keepOriginal, wav, aiff, mp3, caf.</translation>
    </message>
    <message>
        <source>Sample rate: preserveOriginal, rate44100, rate48000.</source>
        <translation>Частота дискретизации: preserveOriginal, rate44100, rate48000.</translation>
    </message>
    <message>
        <source>Bit depth of PCM output: 16, 24 or 32 (32-bit float) (default 24).</source>
        <translation>Битность PCM-вывода: 16, 24 или 32 (32 бита с плавающей точкой) (по умолчанию 24).</translation>
    </message>
    <message>
        <source>Put this text before every output file name.</source>
        <translation>Добавить этот текст перед именем каждого выходного файла.</translation>
    </message>
    <message>
        <source>Write the run&apos;s CSV report to this file.</source>
        <translation>Записать CSV-отчёт о прогоне в этот файл.</translation>
    </message>
    <message>
        <source>Measure and print; write nothing.</source>
        <translation>Только измерить и вывести; ничего не записывать.</translation>
    </message>
    <message>
        <source>Print one JSON object per file instead of text.</source>
        <translation>Выводить по одному объекту JSON на файл вместо текста.</translation>
    </message>
    <message>
        <source>Language of this run: system, en or ru.</source>
        <translation>Язык этого запуска: system, en или ru.</translation>
    </message>
    <message>
        <source>Audio files and folders to process.</source>
        <translation>Аудиофайлы и папки для обработки.</translation>
    </message>
    <message>
        <source>--output is required unless --analyze-only is given</source>
        <translation>нужен --output, если не указан --analyze-only</translation>
    </message>
    <message>
        <source>no files or folders given</source>
        <translation>не указаны файлы или папки</translation>
    </message>
    <message>
        <source>invalid value for %1: “%2”</source>
        <translation>недопустимое значение для %1: «%2»</translation>
    </message>
    <message>
        <source>nothing to do: no supported audio files among the paths given</source>
        <translation>нечего делать: среди указанных путей нет поддерживаемых аудиофайлов</translation>
    </message>
    <message>
        <source>Report written to %1</source>
        <translation>Отчёт записан в %1</translation>
    </message>
    <message>
        <source>%1 LUFS, peak %2 dBTP, range %3 LU</source>
        <translation>%1 LUFS, пик %2 dBTP, диапазон %3 LU</translation>
    </message>
    <message>
        <source>could not be measured</source>
        <translation>не удалось измерить</translation>
    </message>
    <message>
        <source>%1 → %2 LUFS, gain %3 dB, peak %4 dBTP</source>
        <translation>%1 → %2 LUFS, усиление %3 дБ, пик %4 dBTP</translation>
    </message>
    <message>
        <source>Target Loudness</source>
        <translation>Целевая громкость</translation>
    </message>
    <message>
        <source>Preset</source>
        <translation>Пресет</translation>
    </message>
    <message>
        <source>Custom target</source>
        <translation>Своя цель</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Папка вывода</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Выбрать…</translation>
    </message>
    <message>
        <source>Add prefix</source>
        <translation>Добавить префикс</translation>
    </message>
    <message>
        <source>© 2026 Quillmere Tools. Free software under the GNU GPL, version 3 or later.</source>
        <translation>© 2026 Quillmere Tools. Свободная программа под лицензией GNU GPL версии 3 или новее.</translation>
    </message>
    <message>
        <source>Loudness analysis and audio encoding. Built with --disable-gpl --enable-version3.</source>
        <translation>Анализ громкости и кодирование аудио. Собрано с --disable-gpl --enable-version3.</translation>
    </message>
    <message>
        <source>MP3 encoder (libmp3lame), statically linked into FFmpeg.</source>
        <translation>Кодер MP3 (libmp3lame), статически встроенный в FFmpeg.</translation>
    </message>
    <message>
        <source>%1 — LGPL v3 build (GPL components disabled)</source>
        <translation>%1 — сборка LGPL v3 (компоненты GPL отключены)</translation>
    </message>
    <message>
        <source>Drop to add to the queue</source>
        <translation>Отпустите, чтобы добавить в очередь</translation>
    </message>
    <message>
        <source>Could not save “%1”.
The output folder is on a read-only disk.</source>
        <translation>Не удалось сохранить «%1».
Папка назначения находится на диске, доступном только для чтения.</translation>
    </message>
    <message>
        <source>Could not save “%1”.
The output path is too long for the disk — choose an output folder with a shorter path.</source>
        <translation>Не удалось сохранить «%1».
Путь слишком длинный для этого диска — выберите папку назначения с более коротким путём.</translation>
    </message>
    <message>
        <source>Could not read “%1”.
The file was moved or deleted after it was added.</source>
        <translation>Не удалось прочитать «%1».
Файл был перемещён или удалён после добавления.</translation>
    </message>
    <message>
        <source>Could not read “%1”.
Tonbrook doesn’t have permission to read that file.</source>
        <translation>Не удалось прочитать «%1».
У Tonbrook нет прав на чтение этого файла.</translation>
    </message>
    <message>
        <source>Could not process “%1”.
Reading it took far longer than a file of its size should; its header may be wrong.</source>
        <translation>Не удалось обработать «%1».
Чтение заняло намного больше времени, чем нужно файлу такого размера; возможно, его заголовок повреждён.</translation>
    </message>
    <message>
        <source>The report is not written over “%1”: it is an audio file. Choose another name.</source>
        <translation>Отчёт не записывается поверх «%1»: это аудиофайл. Выберите другое имя.</translation>
    </message>
    <message>
        <source>no such file or folder: %1</source>
        <translation>нет такого файла или папки: %1</translation>
    </message>
    <message>
        <source>warning: %1</source>
        <translation>предупреждение: %1</translation>
    </message>
    <message>
        <source>Peaks reach %1 dBTP, above full scale: they are clipped in %2 PCM. Choose 32-bit float to keep them.</source>
        <translation>Пики достигают %1 dBTP, выше полной шкалы: в %2 PCM они срезаются. Чтобы сохранить их, выберите 32-bit float.</translation>
    </message>
    <message>
        <source>Written at %2 kHz instead of %1 kHz: %3 cannot take %1 kHz.</source>
        <translation>Записано с частотой %2 кГц вместо %1 кГц: %3 не поддерживает %1 кГц.</translation>
    </message>
    <message>
        <source>Downmixed from %1 channels to %2: %3 takes at most %2.</source>
        <translation>Сведено из %1 каналов в %2: %3 поддерживает не больше %2.</translation>
    </message>
    <message>
        <source>Tonbrook’s own ffmpeg is missing or cannot start (%1). Nothing was processed: reinstall Tonbrook.</source>
        <translation>Встроенный ffmpeg Tonbrook отсутствует или не запускается (%1). Ничего не обработано: переустановите Tonbrook.</translation>
    </message>
    <message>
        <source>The source&apos;s chunk list is damaged: its timecode, markers and other chunks were not carried over.</source>
        <translation>Список блоков исходного файла повреждён: тайм-код, маркеры и другие блоки не перенесены.</translation>
    </message>
    <message>
        <source>timecode (bext)</source>
        <translation>тайм-код (bext)</translation>
    </message>
    <message>
        <source>markers</source>
        <translation>маркеры</translation>
    </message>
    <message>
        <source>loops</source>
        <translation>петли</translation>
    </message>
    <message>
        <source>Not kept in %1: %2.</source>
        <translation>Не сохранено в %1: %2.</translation>
    </message>
    <message>
        <source>Not measured yet</source>
        <translation>Ещё не измерено</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Тишина</translation>
    </message>
    <message>
        <source>Silent or too short to measure</source>
        <translation>Тишина или слишком короткий файл для измерения</translation>
    </message>
    <message>
        <source>Unreadable</source>
        <translation>Не читается</translation>
    </message>
    <message>
        <source>The file could not be read to measure it</source>
        <translation>Файл не удалось прочитать для измерения</translation>
    </message>
    <message>
        <source>Queued</source>
        <translation>В очереди</translation>
    </message>
    <message>
        <source>Back to Queue</source>
        <translation>Назад к очереди</translation>
    </message>
    <message>
        <source>Retry Failed</source>
        <translation>Повторить неудачные</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) skipped: unsupported format (%1)</source>
        <translation>
            <numerusform>%n файл пропущен: неподдерживаемый формат (%1)</numerusform>
            <numerusform>%n файла пропущены: неподдерживаемый формат (%1)</numerusform>
            <numerusform>%n файлов пропущено: неподдерживаемый формат (%1)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) skipped: not audio files</source>
        <translation>
            <numerusform>%n объект пропущен: не аудиофайл</numerusform>
            <numerusform>%n объекта пропущены: не аудиофайлы</numerusform>
            <numerusform>%n объектов пропущено: не аудиофайлы</numerusform>
        </translation>
    </message>
    <message>
        <source>GAIN</source>
        <translation>УСИЛЕНИЕ</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>Источник</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Усиление</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Результат</translation>
    </message>
    <message>
        <source>Written to</source>
        <translation>Записан в</translation>
    </message>
    <message>
        <source>%1 LUFS · %2 dBTP · range %3 LU</source>
        <translation>%1 LUFS · %2 dBTP · диапазон %3 LU</translation>
    </message>
    <message>
        <source>%1 LUFS · %2 dBTP</source>
        <translation>%1 LUFS · %2 dBTP</translation>
    </message>
    <message>
        <source>Loudness unchanged</source>
        <translation>Громкость без изменений</translation>
    </message>
    <message>
        <source>ceiling %1 dBTP</source>
        <translation>потолок %1 dBTP</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Hide settings</source>
        <translation>Скрыть настройки</translation>
    </message>
    <message>
        <source>FOLDER</source>
        <translation>ПАПКА</translation>
    </message>
    <message>
        <source>No files to show</source>
        <translation>Нет файлов для показа</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>Все файлы</translation>
    </message>
    <message>
        <source>Not measured</source>
        <translation>Не измерены</translation>
    </message>
    <message>
        <source>Failed files</source>
        <translation>С ошибкой</translation>
    </message>
    <message>
        <source>Elapsed %1</source>
        <translation>Прошло %1</translation>
    </message>
    <message>
        <source>about %1 left</source>
        <translation>осталось около %1</translation>
    </message>
    <message>
        <source>Stop processing?</source>
        <translation>Остановить обработку?</translation>
    </message>
    <message>
        <source>%1 of %2 files are done. The files not yet written will stay in the queue; nothing written so far is lost.</source>
        <translation>Обработано файлов: %1 из %2. Файлы, которые ещё не записаны, останутся в очереди; уже записанное не пропадёт.</translation>
    </message>
    <message>
        <source>Keep Going</source>
        <translation>Продолжить</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Остановить</translation>
    </message>
    <message>
        <source>Scanning… %1 found</source>
        <translation>Поиск файлов… найдено: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n reached target loudness</source>
        <translation>
            <numerusform>%n файл достиг целевой громкости</numerusform>
            <numerusform>%n файла достигли целевой громкости</numerusform>
            <numerusform>%n файлов достигли целевой громкости</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n converted</source>
        <translation>
            <numerusform>%n файл сконвертирован</numerusform>
            <numerusform>%n файла сконвертированы</numerusform>
            <numerusform>%n файлов сконвертировано</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n limited by true peak</source>
        <translation>
            <numerusform>%n файл ограничен по true peak</numerusform>
            <numerusform>%n файла ограничены по true peak</numerusform>
            <numerusform>%n файлов ограничено по true peak</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n файл с ошибкой</numerusform>
            <numerusform>%n файла с ошибкой</numerusform>
            <numerusform>%n файлов с ошибкой</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <translation>
            <numerusform>%n файл добавлен</numerusform>
            <numerusform>%n файла добавлены</numerusform>
            <numerusform>%n файлов добавлено</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n already in queue</source>
        <translation>
            <numerusform>%n файл уже в очереди</numerusform>
            <numerusform>%n файла уже в очереди</numerusform>
            <numerusform>%n файлов уже в очереди</numerusform>
        </translation>
    </message>
    <message>
        <source>Done</source>
        <comment>the button that closes a sheet</comment>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>16-bit</source>
        <translation>16 бит</translation>
    </message>
    <message>
        <source>24-bit</source>
        <translation>24 бит</translation>
    </message>
    <message>
        <source>32-bit float</source>
        <translation>32 бит float</translation>
    </message>
    <message>
        <source>Files measured or written at once, 1 to 64 (default %1: one per core, at least 3, at most 16).</source>
        <translation>Сколько файлов измерять или записывать одновременно, от 1 до 64 (по умолчанию %1: по одному на ядро, не меньше 3 и не больше 16).</translation>
    </message>
    <message>
        <source>Leave out files whose output file is already there, so that an interrupted run can be resumed.</source>
        <translation>Пропускать файлы, для которых выходной файл уже есть, чтобы продолжить прерванный запуск.</translation>
    </message>
    <message>
        <source>Already written: %1</source>
        <translation>Уже записан: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) skipped: already written</source>
        <translation>
            <numerusform>%n файл пропущен: уже записан</numerusform>
            <numerusform>%n файла пропущены: уже записаны</numerusform>
            <numerusform>%n файлов пропущено: уже записаны</numerusform>
        </translation>
    </message>
    <message>
        <source>Skipped</source>
        <translation>Пропущен</translation>
    </message>
</context>
</TS>

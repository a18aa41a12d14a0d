<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>L</name>
    <message>
        <source>Batch loudness normalization and audio conversion</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Processing Complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n folder(s)</source>
        <translation>
            <numerusform>%n folder</numerusform>
            <numerusform>%n folders</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) processed</source>
        <translation>
            <numerusform>%n file processed</numerusform>
            <numerusform>%n files processed</numerusform>
        </translation>
    </message>
    <message>
        <source>Reveal Output Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Process New Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select audio files to add to the queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select a folder to scan for audio files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose where prepared audio will be saved</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop audio files or folders here</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) loaded</source>
        <translation>
            <numerusform>%n file loaded</numerusform>
            <numerusform>%n files loaded</numerusform>
        </translation>
    </message>
    <message>
        <source>Individual files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Analyze Loudness</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Process %n File(s)</source>
        <translation>
            <numerusform>Process %n File</numerusform>
            <numerusform>Process %n Files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) ready</source>
        <translation>
            <numerusform>%n file ready</numerusform>
            <numerusform>%n files ready</numerusform>
        </translation>
    </message>
    <message>
        <source>Analyzing loudness… %1/%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Processing %1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No output folder selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normalize loudness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>True Peak Ceiling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No folder selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reveal in file manager when complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No files in queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Process Selected (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The output folder overlaps your imported files. Exports will be kept separate, but choosing a folder outside the source is recommended.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tonbrook can&apos;t write to this folder. Choose a different destination.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support the project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thank you for using Tonbrook</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tonbrook is a free tool by Quillmere Tools. If it helps your work, you can support its development with a tip or by subscribing to the channel. It&apos;s entirely optional — and it helps new tools get made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subscribe to channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Theatre Ambience</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Active Ambience</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Music / Playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Voice / Dialogue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Podcast</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Streaming</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preserve original</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep original</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sample Rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bit Depth</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ready</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Analyzing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not process “%1”.
The file may be damaged or use an unsupported codec.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not save “%1”.
The disk is full — free up space and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not write “%1”.
Tonbrook doesn’t have permission for that folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not save “%1”.
Check that the output folder is writable and has enough free space.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skipped “%1” to avoid overwriting the original file.
Choose an output folder outside the source.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancelled.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not save the report: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FILE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SOURCE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LOUDNESS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OUTPUT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>STATUS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Processing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Report</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Licenses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View license</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide license</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave a tip</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Process Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measures audio files and writes them at one loudness, as the Tonbrook window does.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: %1 [options] PATH...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output folder (required unless --analyze-only).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loudness preset: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom target loudness, -70 to -5; selects the custom preset.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>True-peak ceiling, -9 to 0 (default -1.0).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Convert only; do not change the loudness.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output format: keepOriginal, wav, aiff, mp3, caf.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sample rate: preserveOriginal, rate44100, rate48000.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Put this text before every output file name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write the run&apos;s CSV report to this file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measure and print; write nothing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print one JSON object per file instead of text.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Language of this run: system, en or ru.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Audio files and folders to process.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--output is required unless --analyze-only is given</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no files or folders given</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>invalid value for %1: “%2”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing to do: no supported audio files among the paths given</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Report written to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 LUFS, peak %2 dBTP, range %3 LU</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>could not be measured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 → %2 LUFS, gain %3 dB, peak %4 dBTP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target Loudness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom target</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add prefix</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>© 2026 Quillmere Tools. Free software under the GNU GPL, version 3 or later.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loudness analysis and audio encoding. Built with --disable-gpl --enable-version3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MP3 encoder (libmp3lame), statically linked into FFmpeg.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 — LGPL v3 build (GPL components disabled)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop to add to the queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not save “%1”.
The output folder is on a read-only disk.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not save “%1”.
The output path is too long for the disk — choose an output folder with a shorter path.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not read “%1”.
The file was moved or deleted after it was added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not read “%1”.
Tonbrook doesn’t have permission to read that file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not process “%1”.
Reading it took far longer than a file of its size should; its header may be wrong.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Peaks reach %1 dBTP, above full scale: they are clipped in %2 PCM. Choose 32-bit float to keep them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downmixed from %1 channels to %2: %3 takes at most %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tonbrook’s own ffmpeg is missing or cannot start (%1). Nothing was processed: reinstall Tonbrook.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The report is not written over “%1”: it is an audio file. Choose another name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bit depth of PCM output: 16, 24 or 32 (32-bit float) (default 24).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no such file or folder: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>warning: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Written at %2 kHz instead of %1 kHz: %3 cannot take %1 kHz.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The source&apos;s chunk list is damaged: its timecode, markers and other chunks were not carried over.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>timecode (bext)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>markers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>loops</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not kept in %1: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not measured yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Silent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Silent or too short to measure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unreadable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file could not be read to measure it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Queued</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back to Queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Retry Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) skipped: unsupported format (%1)</source>
        <translation>
            <numerusform>%n file skipped: unsupported format (%1)</numerusform>
            <numerusform>%n files skipped: unsupported format (%1)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) skipped: not audio files</source>
        <translation>
            <numerusform>%n item skipped: not an audio file</numerusform>
            <numerusform>%n items skipped: not audio files</numerusform>
        </translation>
    </message>
    <message>
        <source>GAIN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Written to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 LUFS · %2 dBTP · range %3 LU</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 LUFS · %2 dBTP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loudness unchanged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ceiling %1 dBTP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FOLDER</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No files to show</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not measured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Elapsed %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>about %1 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop processing?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 files are done. The files not yet written will stay in the queue; nothing written so far is lost.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep Going</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scanning… %1 found</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n reached target loudness</source>
        <translation>
            <numerusform>%n reached target loudness</numerusform>
            <numerusform>%n reached target loudness</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n converted</source>
        <translation>
            <numerusform>%n converted</numerusform>
            <numerusform>%n converted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n limited by true peak</source>
        <translation>
            <numerusform>%n limited by true peak</numerusform>
            <numerusform>%n limited by true peak</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n failed</numerusform>
            <numerusform>%n failed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <translation>
            <numerusform>%n added</numerusform>
            <numerusform>%n added</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n already in queue</source>
        <translation>
            <numerusform>%n already in queue</numerusform>
            <numerusform>%n already in queue</numerusform>
        </translation>
    </message>
    <message>
        <source>Done</source>
        <comment>the button that closes a sheet</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>16-bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>24-bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>32-bit float</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files measured or written at once, 1 to 64 (default %1: one per core, at least 3, at most 16).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave out files whose output file is already there, so that an interrupted run can be resumed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Already written: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) skipped: already written</source>
        <translation>
            <numerusform>%n file skipped: already written</numerusform>
            <numerusform>%n files skipped: already written</numerusform>
        </translation>
    </message>
    <message>
        <source>Skipped</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AudioCategory.h"
#include "model/FileStamp.h"
#include "model/LoudnessMeasurement.h"
#include "model/OutputFormatMode.h"
#include "model/ProcessingResult.h"
#include "model/ProcessingStatus.h"
#include "model/SourceAudioFormat.h"

#include <QString>
#include <QUuid>

#include <optional>

// One entry of the queue. A value: the queue changes an item by replacing the
// element with the same id, and work that finishes later finds its item by id.
struct AudioFileItem
{
    QUuid id;
    // Absolute path of the file as given or as found by a folder scan.
    QString sourcePath;
    // What the user sees and what the output mirrors: the file name for a
    // file added on its own, the path below the folder for one found in a
    // folder, joined by "/".
    QString relativePath;
    SourceAudioFormat sourceFormat = SourceAudioFormat::Wav;
    AudioCategory category = AudioCategory::Other;
    std::optional<double> measuredLUFS;
    std::optional<LoudnessMeasurement> measurement;
    OutputFormatMode resolvedOutputFormat = OutputFormatMode::KeepOriginal;
    ProcessingStatus status;
    std::optional<ProcessingResult> result;
    std::optional<QString> errorDetails;
    // The source as it was when `measurement` was taken: a file changed since
    // is measured again before it is written.
    std::optional<FileStamp> measuredStamp;
    // Where the last run wrote the file (the name actually written).
    std::optional<QString> writtenPath;
    // The last attempt to measure the file could not read it.
    bool unreadable = false;

    // The folder below the dropped one ("Act 1/Cues"); empty for a file added on its own.
    QString folder() const
    {
        const qsizetype slash = relativePath.lastIndexOf(u'/');
        return slash > 0 ? relativePath.left(slash) : QString();
    }

    // Still to be measured before a run: not measured, not known to be
    // unreadable, and not already processed (a processed file keeps its outcome
    // on screen; processing measures what it needs itself).
    bool needsMeasuring() const
    {
        return !measurement && !unreadable &&
               (!result || result->outcome == ProcessingOutcome::Cancelled);
    }

    friend bool operator==(const AudioFileItem &, const AudioFileItem &) = default;
};

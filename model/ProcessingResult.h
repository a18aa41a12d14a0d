// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/OutputChange.h"
#include "model/ProcessingOutcome.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What happened to one file. The figures are measured on the written file
// wherever it could differ from a prediction (another rate or channel count,
// a lossy encoder); for PCM at the source's own rate and layout they are the
// plan's exact predictions. A figure is absent where it does not apply (plain
// conversion) or is not finite (a silent file).
struct ProcessingResult
{
    QString sourceFileName;
    QString outputFileName;
    std::optional<double> originalLUFS;
    std::optional<double> finalLUFS;
    std::optional<double> appliedGain;
    std::optional<double> truePeak;
    ProcessingOutcome outcome = ProcessingOutcome::Success;
    std::optional<QString> warningMessage;
    // What the encoder's limits changed ("Preserve original" at 96 kHz into MP3).
    QList<OutputChange> changes{};
    // What the source carried that the output format cannot ("iXML",
    // "markers", "loops", "bext"), or "damaged" when the source's chunk list
    // could not be read and only what ffmpeg reads was kept.
    QStringList notKept{};
    // The figures were measured on the written file, not predicted.
    bool measured = false;

    friend bool operator==(const ProcessingResult &, const ProcessingResult &) = default;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The system's own wording of an errno value, always in English: the reasons
// are classified by their words later ("no space", "permission"), which a
// translated message would defeat.
QString systemErrorText(int errorNumber);

// The same followed by the path it concerns, as a person reads it: "No space
// left on device: /out/take.wav".
QString systemErrorAt(int errorNumber, const QString &path);

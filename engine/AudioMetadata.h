// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AudioStreamFacts.h"
#include "model/FileStamp.h"

#include <QString>

#include <optional>

namespace AudioMetadata {

// The sample rate the file's container declares, in hertz, read with the
// bundled libavformat. Absent for anything unreadable or not audio; never
// throws. Only the header is read.
std::optional<int> sampleRate(const QString &path);

// The first audio stream's rate, channel count and sample format, read the
// same way; absent for anything unreadable or not audio.
std::optional<AudioStreamFacts> streamFacts(const QString &path);

// True when the path names something that exists and is not a regular file
// (a pipe, a device, a socket, a folder). Opening a pipe waits for a writer
// for ever, so nothing that reads sources opens one.
bool isSomethingOtherThanAFile(const QString &path);

// How long the first audio stream plays, in seconds, from the container (or,
// where it does not say, from a short look at the stream); absent when unknown.
std::optional<double> durationSeconds(const QString &path);

// The file as it is now; absent when it cannot be looked at.
std::optional<FileStamp> stamp(const QString &path);

// A declared rate as a whole number of hertz: halves away from zero; absent
// for zero, negative or non-finite rates.
std::optional<int> roundedSampleRate(double hertz);

} // namespace AudioMetadata

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/FFmpegRunning.h"

#include <QString>

#include <chrono>
#include <optional>

// Runs the bundled ffmpeg as a child process. Stateless apart from where the
// executable is, so copies are interchangeable and one runner may serve any
// number of concurrent runs.
class FFmpegRunner final : public FFmpegRunning
{
public:
    // How often a running child's token is looked at.
    static constexpr std::chrono::milliseconds cancellationPollInterval{50};
    // How much lower than Tonbrook's own the children's scheduling priority
    // is (as `nice -n 10`), so that a batch leaves the desktop responsive.
    static constexpr int childNiceness = 10;
    // How long a child asked to stop may take before it is killed.
    static constexpr std::chrono::seconds terminationGrace{5};
    // The longest a run may take on an input of this size: a minute a
    // mebibyte is several times what the slowest case needs (a 32 kb/s AAC
    // measured at 192 kHz, three jobs on two busy cores), while a small file
    // whose header promises days of audio (a "1 Hz" WAV) is stopped instead
    // of holding a job for an hour.
    static constexpr std::chrono::seconds timeLimitBase{10};
    static constexpr std::chrono::seconds timeLimitPerMebibyte{60};
    static std::chrono::seconds timeLimitFor(qint64 inputBytes);

    // An absent path is reported by every run as FFmpegError::binaryNotFound;
    // a path that is not there or not executable shows up as a launch failure.
    // A run whose input (after "-i") is a file is stopped once it has taken
    // timeLimitFor(the file's size) and throws FFmpegError::timedOut.
    explicit FFmpegRunner(std::optional<QString> binaryPath);

    const std::optional<QString> &binaryPath() const { return m_binaryPath; }

    FFmpegResult runListening(const QStringList &arguments, const CancellationToken &cancellation,
                              const OutputListener &onOutput) const override;
    FFmpegResult run(const QStringList &arguments,
                     const CancellationToken &cancellation) const override;

private:
    std::optional<QString> m_binaryPath;
};

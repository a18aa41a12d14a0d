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

    // An absent path is reported by every run as FFmpegError::binaryNotFound;
    // a path that is not there or not executable shows up as a launch failure.
    explicit FFmpegRunner(std::optional<QString> binaryPath);

    const std::optional<QString> &binaryPath() const { return m_binaryPath; }

    FFmpegResult run(const QStringList &arguments,
                     const CancellationToken &cancellation) const override;

private:
    std::optional<QString> m_binaryPath;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

// Base of the engine's thrown errors. They carry raw facts (exit codes, the
// system's wording, ffmpeg's output) and never user text; the user's words are
// made in one place from these facts.
class EngineError : public std::exception
{
public:
    // A developer-facing rendering of the case and its payload, used where one
    // error is wrapped in another and only its text can travel on.
    virtual QString describe() const = 0;
    const char *what() const noexcept override;

protected:
    mutable QByteArray m_what;
};

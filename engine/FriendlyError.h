// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

// A failure in the user's words, with the technical facts kept for the
// details view.
struct FriendlyError
{
    QString message;
    std::optional<QString> details;

    friend bool operator==(const FriendlyError &, const FriendlyError &) = default;
};

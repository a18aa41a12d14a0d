// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Which screen the window shows.
enum class AppScreenState
{
    Idle,
    Processing,
    Completed,
};

namespace AppScreenStates {

// "idle", "processing", "completed", as the views name them.
QString name(AppScreenState state);

} // namespace AppScreenStates

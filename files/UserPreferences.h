// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>

#include <memory>

// The user's preferences file ($XDG_CONFIG_HOME/Quillmere Tools/Tonbrook.conf).
// Only two keys live there: the language choice and the output folder.
namespace UserPreferences {

std::unique_ptr<QSettings> open();

} // namespace UserPreferences

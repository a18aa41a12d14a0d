// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/UserPreferences.h"

namespace UserPreferences {

std::unique_ptr<QSettings> open()
{
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                       QStringLiteral("Quillmere Tools"),
                                       QStringLiteral("Tonbrook"));
}

} // namespace UserPreferences

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <optional>

// The interface language the user chose. System follows the system's first
// preferred language where Tonbrook speaks it, else English.
//
// A new language is one case here (with its code) and one catalogue,
// i18n/tonbrook_<code>.ts.
namespace AppLanguages {
Q_NAMESPACE
// QML: AppLanguage.System, AppLanguage.En, AppLanguage.Ru.
QML_NAMED_ELEMENT(AppLanguage)

enum class Language
{
    System,
    En,
    Ru,
};
Q_ENUM_NS(Language)

} // namespace AppLanguages

using AppLanguage = AppLanguages::Language;

namespace AppLanguages {

inline constexpr std::array all{AppLanguage::System, AppLanguage::En, AppLanguage::Ru};
// The languages with a catalogue, in the order System looks for them after
// English, which is the fallback.
inline constexpr std::array spoken{AppLanguage::En, AppLanguage::Ru};

// "system", "en", "ru": also what the preferences store.
QString rawValue(AppLanguage language);
std::optional<AppLanguage> fromRawValue(QStringView text);

// The language code of a spoken language ("en", "ru"); empty for System.
QString code(AppLanguage language);

} // namespace AppLanguages

// SPDX-License-Identifier: GPL-3.0-or-later
#include "localization/AppLanguage.h"

#include "model/RawValues.h"

namespace AppLanguages {

namespace {
constexpr RawValueTable<all.size()> raw{u"system", u"en", u"ru"};
}

QString rawValue(AppLanguage language)
{
    return rawValueIn(raw, language);
}

std::optional<AppLanguage> fromRawValue(QStringView text)
{
    return enumFromRawValue(all, raw, text);
}

QString code(AppLanguage language)
{
    return language == AppLanguage::System ? QString() : rawValue(language);
}

} // namespace AppLanguages

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/AppContext.h"

#include "app/MainViewModel.h"
#include "app/SettingsModel.h"
#include "engine/BuildInfo.h"
#include "localization/LanguageManager.h"
#include "ui/LicenseListModel.h"

#include <QCoreApplication>
#include <QJSEngine>

namespace {
AppContext *current = nullptr;
}

AppContext::AppContext(MainViewModel &viewModel, SettingsModel &settings,
                       LicenseListModel &licenses, LanguageManager &language, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_settings(settings)
    , m_licenses(licenses)
    , m_language(language)
{
    current = this;
    connect(&m_language, &LanguageManager::selectionChanged, this,
            &AppContext::languageSelectionChanged);
}

AppContext::~AppContext()
{
    if (current == this)
        current = nullptr;
}

AppContext *AppContext::create(QQmlEngine *, QJSEngine *engine)
{
    // The application keeps ownership; the engine must not delete it.
    if (current)
        engine->setObjectOwnership(current, QJSEngine::CppOwnership);
    return current;
}

AppLanguage AppContext::languageSelection() const
{
    return m_language.selection();
}

void AppContext::setLanguageSelection(AppLanguage selection)
{
    m_language.setSelection(selection);
}

QVariantList AppContext::languages()
{
    QVariantList languages;
    for (AppLanguage language : AppLanguages::all)
        languages.append(QVariant::fromValue(language));
    return languages;
}

QString AppContext::version()
{
    return QStringLiteral("%1 (%2)").arg(QLatin1StringView(BuildInfo::version),
                                         QLatin1StringView(BuildInfo::buildNumber));
}

void AppContext::quit()
{
    QCoreApplication::quit();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "localization/LanguageManager.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

#include <utility>

LanguageManager::LanguageManager(std::unique_ptr<QSettings> store, QStringList preferredLanguages,
                                 QObject *parent)
    : QObject(parent)
    , m_store(std::move(store))
    , m_systemLanguage(languageOf(preferredLanguages))
{
    const QString stored = m_store ? m_store->value(key).toString() : QString();
    m_selection = AppLanguages::fromRawValue(stored).value_or(AppLanguage::System);
    installCatalogue();
}

LanguageManager::~LanguageManager()
{
    // The application object may be gone already.
    if (!QCoreApplication::instance())
        return;
    for (const auto *translator : {m_translator.get(), m_qtTranslator.get()})
        if (translator)
            QCoreApplication::removeTranslator(const_cast<QTranslator *>(translator));
}

AppLanguage LanguageManager::languageOf(const QStringList &preferredLanguages)
{
    const QString first =
        preferredLanguages.isEmpty() ? QStringLiteral("en") : preferredLanguages.first().toLower();
    for (AppLanguage language : AppLanguages::spoken) {
        if (first.startsWith(AppLanguages::code(language)))
            return language;
    }
    return AppLanguage::En;
}

bool LanguageManager::systemIsRussian()
{
    static const bool russian = languageOf(QLocale::system().uiLanguages()) == AppLanguage::Ru;
    return russian;
}

AppLanguage LanguageManager::effectiveLanguage() const
{
    return m_selection == AppLanguage::System ? m_systemLanguage : m_selection;
}

void LanguageManager::setSelection(AppLanguage selection)
{
    if (m_store) {
        m_store->setValue(key, AppLanguages::rawValue(selection));
        m_store->sync();
    }
    if (selection == m_selection)
        return;
    m_selection = selection;
    Q_EMIT selectionChanged();
    installCatalogue();
}

void LanguageManager::installCatalogue()
{
    const AppLanguage language = effectiveLanguage();
    if (language == m_installed)
        return;
    auto translator = std::make_unique<QTranslator>();
    const bool loaded = translator->load(QStringLiteral(":/i18n/tonbrook_") +
                                         AppLanguages::code(language) + QStringLiteral(".qm"));
    if (m_translator)
        QCoreApplication::removeTranslator(m_translator.get());
    m_translator.reset();
    if (loaded && QCoreApplication::installTranslator(translator.get()))
        m_translator = std::move(translator);
    // Qt's own texts (file dialogs, --help) in the same language, where the
    // system has them (Debian: qt6-translations-l10n); English needs none.
    if (m_qtTranslator)
        QCoreApplication::removeTranslator(m_qtTranslator.get());
    m_qtTranslator.reset();
    if (language != AppLanguage::En) {
        auto qt = std::make_unique<QTranslator>();
        if (qt->load(QStringLiteral("qt_") + AppLanguages::code(language),
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath)) &&
            QCoreApplication::installTranslator(qt.get()))
            m_qtTranslator = std::move(qt);
    }
    m_installed = language;
    Q_EMIT languageChanged();
}

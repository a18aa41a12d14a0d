// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "localization/AppLanguage.h"

#include <QObject>
#include <QStringList>

#include <memory>

class QSettings;
class QTranslator;

// Keeps the interface language: the user's choice, stored at once under
// "tb.languageSelection", and the Qt catalogue that makes every text speak it.
// Whenever the language in effect changes, the catalogue is swapped and
// languageChanged() tells views to read their texts again.
class LanguageManager : public QObject
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView key{"tb.languageSelection"};

    // A given store (none: the choice lasts for this process only) and a
    // given list of preferred languages.
    LanguageManager(std::unique_ptr<QSettings> store, QStringList preferredLanguages,
                    QObject *parent = nullptr);
    ~LanguageManager() override;

    AppLanguage selection() const { return m_selection; }
    void setSelection(AppLanguage selection);

    // En or Ru (never System): what every text is written in right now.
    AppLanguage effectiveLanguage() const;

    // Computed once per process from the system's preferred languages; a
    // change there shows at the next launch.
    static bool systemIsRussian();
    // The spoken language a preferred-language list starts with; English when
    // it starts with one Tonbrook does not speak, or is empty.
    static AppLanguage languageOf(const QStringList &preferredLanguages);

Q_SIGNALS:
    void selectionChanged();
    void languageChanged();

private:
    void installCatalogue();

    std::unique_ptr<QSettings> m_store;
    AppLanguage m_systemLanguage;
    AppLanguage m_selection = AppLanguage::System;
    std::unique_ptr<QTranslator> m_translator;
    // Qt's own catalogue (dialogs, --help), from the system's Qt translations.
    std::unique_ptr<QTranslator> m_qtTranslator;
    AppLanguage m_installed = AppLanguage::System;
};

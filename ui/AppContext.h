// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/MainViewModel.h"
#include "app/SettingsModel.h"
#include "localization/AppLanguage.h"
#include "ui/LicenseListModel.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class LanguageManager;
class QJSEngine;
class QQmlEngine;

// What the window's QML reaches as `App`: the controller, the settings, the
// licences, the language choice. The application owns it; QML only borrows.
class AppContext : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(App)
    QML_SINGLETON
    Q_PROPERTY(MainViewModel *viewModel READ viewModel CONSTANT)
    Q_PROPERTY(SettingsModel *settings READ settings CONSTANT)
    Q_PROPERTY(LicenseListModel *licenses READ licenses CONSTANT)
    Q_PROPERTY(AppLanguages::Language languageSelection READ languageSelection WRITE
                   setLanguageSelection NOTIFY languageSelectionChanged)
    Q_PROPERTY(QVariantList languages READ languages CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    AppContext(MainViewModel &viewModel, SettingsModel &settings, LicenseListModel &licenses,
               LanguageManager &language, QObject *parent = nullptr);
    ~AppContext() override;

    // The instance QML gets; set by the application before anything is loaded.
    static AppContext *create(QQmlEngine *, QJSEngine *engine);

    MainViewModel *viewModel() const { return &m_viewModel; }
    SettingsModel *settings() const { return &m_settings; }
    LicenseListModel *licenses() const { return &m_licenses; }
    AppLanguage languageSelection() const;
    void setLanguageSelection(AppLanguage selection);
    // What the language menu offers, in its order.
    static QVariantList languages();
    // "0.1.0 (42)": the version and the build number.
    static QString version();

    Q_INVOKABLE void quit();

Q_SIGNALS:
    void languageSelectionChanged();

private:
    MainViewModel &m_viewModel;
    SettingsModel &m_settings;
    LicenseListModel &m_licenses;
    LanguageManager &m_language;
};

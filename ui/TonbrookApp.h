// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/MainViewModel.h"
#include "engine/ResourceLocator.h"
#include "files/SettingsStore.h"

#include <QQmlApplicationEngine>

#include <memory>

class AppContext;
class LanguageManager;
class LicenseListModel;
class QQuickWindow;
class SettingsModel;

// The windowed application: the controller on the given services, the QML
// engine and the main window, the language wiring, and the files given on the
// command line (so "Open with Tonbrook" works).
class TonbrookApp
{
public:
    TonbrookApp(MainViewModel::Services services, LanguageManager &language,
                const QStringList &initialPaths = {}, ResourceLocator resources = {});
    ~TonbrookApp();

    MainViewModel &viewModel() { return *m_viewModel; }
    QQmlApplicationEngine &engine() { return m_engine; }
    // The main window, or null when the QML could not be loaded.
    QQuickWindow *window() const;

private:
    SettingsStore m_settingsStore;
    std::unique_ptr<MainViewModel> m_viewModel;
    std::unique_ptr<SettingsModel> m_settings;
    std::unique_ptr<LicenseListModel> m_licenses;
    std::unique_ptr<AppContext> m_context;
    QQmlApplicationEngine m_engine;
};

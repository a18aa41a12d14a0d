// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TonbrookApp.h"

#include "app/SettingsModel.h"
#include "localization/LanguageManager.h"
#include "ui/AppContext.h"
#include "ui/LicenseListModel.h"
#include "ui/style/IconProvider.h"

#include <QQuickWindow>
#include <QTimer>

TonbrookApp::TonbrookApp(MainViewModel::Services services, LanguageManager &language,
                         const QStringList &initialPaths, ResourceLocator resources)
    : m_settingsStore(services.settingsStore)
    , m_viewModel(std::make_unique<MainViewModel>(std::move(services)))
    , m_settings(std::make_unique<SettingsModel>(*m_viewModel))
    , m_licenses(std::make_unique<LicenseListModel>(std::move(resources)))
    , m_context(std::make_unique<AppContext>(*m_viewModel, *m_settings, *m_licenses, language))
{
    // Texts the models hold are made again; QML bindings read theirs through L.tr.
    QObject::connect(&language, &LanguageManager::languageChanged, &m_engine, [this] {
        m_viewModel->retranslate();
        m_settings->retranslate();
        m_licenses->retranslate();
    });

    m_engine.addImageProvider(QStringLiteral("tbicon"), new IconProvider);
    // Modules are found in the resources, wherever the executable is installed.
    m_engine.addImportPath(QStringLiteral("qrc:/"));
    m_engine.load(QUrl(QStringLiteral("qrc:/Tonbrook/Ui/Main.qml")));
    if (QQuickWindow *main = window(); main && m_settingsStore.windowSize())
        main->resize(m_settingsStore.windowSize()->expandedTo(main->minimumSize()));

    if (!initialPaths.isEmpty()) {
        QTimer::singleShot(0, m_viewModel.get(), [viewModel = m_viewModel.get(), initialPaths] {
            viewModel->importInBackground(initialPaths);
        });
    }
}

TonbrookApp::~TonbrookApp()
{
    if (const QQuickWindow *main = window())
        m_settingsStore.saveWindowSize(main->size());
    // The window goes before the objects it binds to.
    const QList<QObject *> roots = m_engine.rootObjects();
    for (QObject *root : roots)
        delete root;
}

QQuickWindow *TonbrookApp::window() const
{
    const QList<QObject *> roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

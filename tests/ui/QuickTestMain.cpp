// SPDX-License-Identifier: GPL-3.0-or-later
#include "localization/LanguageManager.h"
#include "ui/style/IconProvider.h"

#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickStyle>
#include <QSettings>
#include <QTemporaryDir>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(Tonbrook_AppPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_LocalizationPlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_StylePlugin)
Q_IMPORT_QML_PLUGIN(Tonbrook_UiPlugin)

// The QML tests see the application's own modules and icons.
class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable()
    {
        QQuickStyle::setStyle(QStringLiteral("Basic"));
        // English texts, plural forms included.
        m_language = std::make_unique<LanguageManager>(
            std::make_unique<QSettings>(m_dir.filePath(QStringLiteral("p.ini")),
                                        QSettings::IniFormat),
            QStringList{QStringLiteral("en-US")});
        m_language->setSelection(AppLanguage::En);
    }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath(QStringLiteral("qrc:/"));
        engine->addImageProvider(QStringLiteral("tbicon"), new IconProvider);
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<LanguageManager> m_language;
};

QUICK_TEST_MAIN_WITH_SETUP(TonbrookQml, Setup)

#include "QuickTestMain.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include <QQmlExtensionPlugin>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(Tonbrook_StylePlugin)

QUICK_TEST_MAIN(TonbrookControls)

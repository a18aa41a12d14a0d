// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/style/TBTheme.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

// The palette as QML sees it: `TBTheme.gold` and so on, the same values the
// C++ side draws with.
class TBThemeObject : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TBTheme)
    QML_SINGLETON
    Q_PROPERTY(QColor bg READ bg CONSTANT)
    Q_PROPERTY(QColor panel READ panel CONSTANT)
    Q_PROPERTY(QColor panel2 READ panel2 CONSTANT)
    Q_PROPERTY(QColor border READ border CONSTANT)
    Q_PROPERTY(QColor text READ text CONSTANT)
    Q_PROPERTY(QColor muted READ muted CONSTANT)
    Q_PROPERTY(QColor disabled READ disabled CONSTANT)
    Q_PROPERTY(QColor gold READ gold CONSTANT)
    Q_PROPERTY(QColor goldPressed READ goldPressed CONSTANT)
    Q_PROPERTY(QColor goldSubtle READ goldSubtle CONSTANT)
    Q_PROPERTY(QColor goldBorder READ goldBorder CONSTANT)
    Q_PROPERTY(QColor panelBorder READ panelBorder CONSTANT)
    Q_PROPERTY(QColor rowAlt READ rowAlt CONSTANT)
    Q_PROPERTY(QColor rowHover READ rowHover CONSTANT)
    Q_PROPERTY(QColor headerBg READ headerBg CONSTANT)
    Q_PROPERTY(QColor btnBg READ btnBg CONSTANT)
    Q_PROPERTY(QColor btnBorder READ btnBorder CONSTANT)
    Q_PROPERTY(QColor success READ success CONSTANT)
    Q_PROPERTY(QColor warning READ warning CONSTANT)
    Q_PROPERTY(QColor error READ error CONSTANT)
    Q_PROPERTY(QColor info READ info CONSTANT)
    Q_PROPERTY(QColor focus READ focus CONSTANT)

public:
    using QObject::QObject;

    static QColor bg() { return TBTheme::bg(); }
    static QColor panel() { return TBTheme::panel(); }
    static QColor panel2() { return TBTheme::panel2(); }
    static QColor border() { return TBTheme::border(); }
    static QColor text() { return TBTheme::text(); }
    static QColor muted() { return TBTheme::muted(); }
    static QColor disabled() { return TBTheme::disabled(); }
    static QColor gold() { return TBTheme::gold(); }
    static QColor goldPressed() { return TBTheme::goldPressed(); }
    static QColor goldSubtle() { return TBTheme::goldSubtle(); }
    static QColor goldBorder() { return TBTheme::goldBorder(); }
    static QColor panelBorder() { return TBTheme::panelBorder(); }
    static QColor rowAlt() { return TBTheme::rowAlt(); }
    static QColor rowHover() { return TBTheme::rowHover(); }
    static QColor headerBg() { return TBTheme::headerBg(); }
    static QColor btnBg() { return TBTheme::btnBg(); }
    static QColor btnBorder() { return TBTheme::btnBorder(); }
    static QColor success() { return TBTheme::success(); }
    static QColor warning() { return TBTheme::warning(); }
    static QColor error() { return TBTheme::error(); }
    static QColor focus() { return TBTheme::focus(); }
    static QColor info() { return TBTheme::info(); }
};

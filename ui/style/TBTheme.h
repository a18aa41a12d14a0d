// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPalette>

// The window's one fixed dark palette. Every view, in QML and in C++, draws
// with these members and defines no colour of its own.
namespace TBTheme {

QColor bg();
QColor panel();
QColor panel2();
QColor border();
QColor text();
QColor muted();
QColor disabled();
QColor gold();
QColor goldPressed();
QColor goldSubtle();
QColor goldBorder();
QColor panelBorder();
QColor rowAlt();
QColor rowHover();
QColor headerBg();
QColor btnBg();
QColor btnBorder();
QColor success();
QColor warning();
QColor error();
QColor info();
// The keyboard focus ring.
QColor focus();

// The palette for Qt's own widgets (file dialogs) so they sit in the same look.
QPalette widgetPalette();

} // namespace TBTheme

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/style/TBTheme.h"

namespace TBTheme {

namespace {

QColor withOpacity(QColor colour, double opacity)
{
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

} // namespace

QColor bg()
{
    return QColor(8, 8, 8);
}
QColor panel()
{
    return QColor(18, 18, 18);
}
QColor panel2()
{
    return QColor(24, 24, 24);
}
QColor border()
{
    return QColor(42, 42, 42);
}
QColor text()
{
    return QColor(232, 232, 232);
}
QColor muted()
{
    return QColor(154, 154, 154);
}
QColor disabled()
{
    return QColor(102, 102, 102);
}
QColor gold()
{
    return QColor(230, 211, 106);
}
QColor goldPressed()
{
    return QColor(200, 184, 78);
}
QColor goldSubtle()
{
    return withOpacity(gold(), 0.06);
}
QColor goldBorder()
{
    return withOpacity(gold(), 0.25);
}
QColor panelBorder()
{
    return withOpacity(border(), 0.6);
}
QColor rowAlt()
{
    return withOpacity(Qt::white, 0.02);
}
QColor rowHover()
{
    return withOpacity(Qt::white, 0.04);
}
QColor headerBg()
{
    return panel();
}
QColor btnBg()
{
    return QColor(31, 31, 31);
}
QColor btnBorder()
{
    return QColor(58, 58, 58);
}
QColor success()
{
    return QColor(111, 174, 122);
}
QColor warning()
{
    return QColor(217, 166, 90);
}
QColor error()
{
    return QColor(201, 123, 123);
}
QColor info()
{
    return QColor(111, 168, 217);
}
QColor focus()
{
    return gold();
}

QPalette widgetPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, panel());
    palette.setColor(QPalette::WindowText, text());
    palette.setColor(QPalette::Base, bg());
    palette.setColor(QPalette::AlternateBase, panel2());
    palette.setColor(QPalette::Text, text());
    palette.setColor(QPalette::PlaceholderText, muted());
    palette.setColor(QPalette::Button, btnBg());
    palette.setColor(QPalette::ButtonText, text());
    palette.setColor(QPalette::BrightText, gold());
    palette.setColor(QPalette::Highlight, goldPressed());
    palette.setColor(QPalette::HighlightedText, bg());
    palette.setColor(QPalette::Link, gold());
    palette.setColor(QPalette::ToolTipBase, panel2());
    palette.setColor(QPalette::ToolTipText, text());
    palette.setColor(QPalette::Light, btnBorder());
    palette.setColor(QPalette::Midlight, border());
    palette.setColor(QPalette::Mid, border());
    palette.setColor(QPalette::Dark, bg());
    palette.setColor(QPalette::Shadow, Qt::black);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabled());
    return palette;
}

} // namespace TBTheme

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

// Which screen the window shows (QML: AppScreen.Idle, ...).
namespace AppScreen {
Q_NAMESPACE
QML_ELEMENT

enum class State
{
    Idle,
    Processing,
    Completed,
};
Q_ENUM_NS(State)

} // namespace AppScreen

using AppScreenState = AppScreen::State;

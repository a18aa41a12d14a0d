// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppScreenState.h"

namespace AppScreenStates {

QString name(AppScreenState state)
{
    switch (state) {
    case AppScreenState::Idle:
        return QStringLiteral("idle");
    case AppScreenState::Processing:
        return QStringLiteral("processing");
    case AppScreenState::Completed:
        return QStringLiteral("completed");
    }
    return {};
}

} // namespace AppScreenStates

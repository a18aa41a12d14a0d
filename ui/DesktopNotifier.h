// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/RunNotifying.h"

// A desktop notification (the freedesktop notification service on the session
// bus) when a run ends while Tonbrook's window is not the active one. Without
// the service, nothing is shown and nothing waits.
class DesktopNotifier final : public RunNotifying
{
public:
    void runEnded(const QString &title, const QString &body) override;
};

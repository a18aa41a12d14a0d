// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/RunNotifying.h"

#include <QStringList>

// Keeps every notification as "title: body".
class RecordingNotifier final : public RunNotifying
{
public:
    QStringList notified;
    void runEnded(const QString &title, const QString &body) override
    {
        notified.append(title + QStringLiteral(": ") + body);
    }
};

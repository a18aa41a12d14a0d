// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Tells the user that a run has ended while they look elsewhere (a desktop
// notification); the front end decides whether they are looking.
class RunNotifying
{
public:
    virtual ~RunNotifying() = default;

    virtual void runEnded(const QString &title, const QString &body) = 0;
};

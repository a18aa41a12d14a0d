// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Opens the support window (or brings it forward).
class SupportPresenting
{
public:
    virtual ~SupportPresenting() = default;
    virtual void showSupport() = 0;
};

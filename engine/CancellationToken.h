// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>

// A one-way cancel flag shared between the controller and every job of a run.
// It is never reset: a fresh run gets a fresh token, so work that is still
// winding down from the previous run can never be revived by mistake.
class CancellationToken
{
public:
    CancellationToken() = default;
    CancellationToken(const CancellationToken &) = delete;
    CancellationToken &operator=(const CancellationToken &) = delete;

    void cancel();
    bool isCancelled() const;

private:
    mutable std::mutex m_lock;
    bool m_cancelled = false;
};

using CancellationTokenPtr = std::shared_ptr<CancellationToken>;

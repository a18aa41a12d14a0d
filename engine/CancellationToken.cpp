// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/CancellationToken.h"

void CancellationToken::cancel()
{
    const std::lock_guard guard(m_lock);
    m_cancelled = true;
}

bool CancellationToken::isCancelled() const
{
    const std::lock_guard guard(m_lock);
    return m_cancelled;
}

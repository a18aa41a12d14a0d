// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/EngineError.h"

const char *EngineError::what() const noexcept
{
    if (m_what.isEmpty())
        m_what = describe().toUtf8();
    return m_what.constData();
}

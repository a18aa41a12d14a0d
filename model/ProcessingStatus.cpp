// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ProcessingStatus.h"

#include <QMetaEnum>

QString ProcessingStatus::rawValue(Kind kind)
{
    return QString::fromLatin1(QMetaEnum::fromType<Kind>().valueToKey(static_cast<int>(kind)))
        .toLower();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SystemError.h"

#include "model/StandardPath.h"

#include <clocale>
#include <cstring>
#include <locale.h>

QString systemErrorText(int errorNumber)
{
    static const locale_t english = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    if (english == locale_t(nullptr))
        return QString::fromLocal8Bit(std::strerror(errorNumber));
    return QString::fromLocal8Bit(strerror_l(errorNumber, english));
}

QString systemErrorAt(int errorNumber, const QString &path)
{
    return systemErrorText(errorNumber) + QStringLiteral(": ") + displayedPath(path);
}

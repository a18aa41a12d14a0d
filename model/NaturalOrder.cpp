// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/NaturalOrder.h"

#include <QLocale>

QCollator naturalOrder()
{
    QLocale locale = QLocale::system();
    if (locale.language() == QLocale::C)
        locale = QLocale(QLocale::English);
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

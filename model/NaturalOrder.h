// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCollator>

// The order a file manager shows names in: numbers by value ("take 9" before
// "take 10"), case ignored, the system's collation. Under the bare C locale
// (containers, scripts) collation would fall back to byte order, so English
// rules apply there.
QCollator naturalOrder();

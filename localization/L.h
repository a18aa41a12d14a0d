// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/SampleRateMode.h"

#include <QString>

#include <optional>

// Every text the user reads comes through here, in the interface language of
// the moment.
namespace L {

// The display name of a built-in preset; absent for an id that is not one.
std::optional<QString> presetName(QStringView presetId);
QString sampleRateLabel(SampleRateMode mode);

} // namespace L

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ProcessingStatus.h"

#include <QtQml/qqmlregistration.h>

// The status kinds as QML names them: ProcessingStatus.Ready, ...Failed.
namespace ProcessingStatusForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(ProcessingStatusKinds)
QML_NAMED_ELEMENT(ProcessingStatus)
} // namespace ProcessingStatusForeign

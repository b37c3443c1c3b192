// SPDX-License-Identifier: MIT
#include "skin/drawing/skinLog.h"

namespace tunedeck {

Q_LOGGING_CATEGORY(skinLog, "tunedeck.skin", QtWarningMsg)

} // namespace tunedeck

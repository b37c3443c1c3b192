// SPDX-License-Identifier: MIT
#include "platform/windowLog.h"

namespace tunedeck {

Q_LOGGING_CATEGORY(windowLog, "tunedeck.window", QtWarningMsg)

} // namespace tunedeck

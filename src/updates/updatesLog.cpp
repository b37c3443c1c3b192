// SPDX-License-Identifier: MIT
#include "updates/updatesLog.h"

namespace tunedeck {

Q_LOGGING_CATEGORY(updatesLog, "tunedeck.updates", QtWarningMsg)

} // namespace tunedeck

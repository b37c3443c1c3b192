// SPDX-License-Identifier: MIT
#include "audio/audioLog.h"

namespace tunedeck {

Q_LOGGING_CATEGORY(audioLog, "tunedeck.audio", QtWarningMsg)

} // namespace tunedeck

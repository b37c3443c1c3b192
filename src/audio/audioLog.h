// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>

namespace tunedeck {

/// How the sound server is reached, and whose streams there are. Off by default; QT_LOGGING_RULES="tunedeck.audio=true"
/// switches it on.
Q_DECLARE_LOGGING_CATEGORY(audioLog)

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>

namespace tunedeck {

/// The category "tunedeck.window": how the window is shown, activated and minimised, which appearance it has, and what
/// other starts of the program and the desktop ask it for. Off by default; QT_LOGGING_RULES="tunedeck.window=true"
/// switches it on.
Q_DECLARE_LOGGING_CATEGORY(windowLog)

} // namespace tunedeck

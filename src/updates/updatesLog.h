// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>

namespace tunedeck {

/// How a search for updates goes. Off by default; QT_LOGGING_RULES="tunedeck.updates=true" switches it on.
Q_DECLARE_LOGGING_CATEGORY(updatesLog)

} // namespace tunedeck

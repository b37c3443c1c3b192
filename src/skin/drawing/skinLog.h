// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>

namespace tunedeck {

/// The log of what decides how the skin looks: "tunedeck.skin". Off by default;
/// QT_LOGGING_RULES="tunedeck.skin=true" switches it on.
Q_DECLARE_LOGGING_CATEGORY(skinLog)

} // namespace tunedeck

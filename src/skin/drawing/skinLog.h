// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>

namespace tunedeck {

/// The log of what decides how the skin looks: "tunedeck.skin". Off by default.
Q_DECLARE_LOGGING_CATEGORY(skinLog)

} // namespace tunedeck

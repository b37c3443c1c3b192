// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>
#include <QString>

namespace tunedeck {

/// The category "tunedeck.players": which players come, which is followed and why, and what they do wrong. Off
/// by default; QT_LOGGING_RULES="tunedeck.players=true" switches it on.
Q_DECLARE_LOGGING_CATEGORY(playersLog)

/// A text from a player for a log line: at most 200 characters (see shortened()), control characters as spaces.
[[nodiscard]] QString loggable(const QString &text);

} // namespace tunedeck

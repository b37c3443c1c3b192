// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>
#include <QString>

namespace tunedeck {

/// How the window is shown, activated and drawn. Off by default; QT_LOGGING_RULES="tunedeck.window=true" switches it
/// on.
Q_DECLARE_LOGGING_CATEGORY(windowLog)

/// `text` for a log line: at most 200 characters. Texts from outside the program may be of any length.
[[nodiscard]] QString shortened(const QString &text);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

namespace tunedeck {

/// What to call the file that `url` leads to: its last part, of which ASCII letters, digits and ".", "_", "+", "~", "-"
/// are kept, which begins with a letter or a digit and has at most 120 characters. "update" where nothing is left.
[[nodiscard]] QString fileNameFrom(const QUrl &url);

/// `name` for `attempt` 0, for others with the number before its suffix: "tunedeck (1).deb".
[[nodiscard]] QString numberedFileName(const QString &name, int attempt);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

namespace tunedeck {

/// A safe name for the file at `url`: the last part of the path, with only ASCII letters, digits and the characters
/// . _ + ~ and -. It begins with a letter or a digit and has at most 120 characters. It is "update" if nothing is left.
[[nodiscard]] QString fileNameFrom(const QUrl &url);

/// Inserts the number of an attempt before the suffix: "tunedeck (1).deb". Attempt 0 returns `name`.
[[nodiscard]] QString numberedFileName(const QString &name, int attempt);

} // namespace tunedeck

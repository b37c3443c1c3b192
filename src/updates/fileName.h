// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

namespace tunedeck {

/// A safe name for the file of `version` at `url`, such as tunedeck_2.0.deb: the version, and the suffix of the path's
/// last part, with only ASCII letters, digits and the characters . _ + ~ and -. At most 125 characters.
[[nodiscard]] QString fileNameFor(const QString &version, const QUrl &url);

/// Inserts the number of an attempt before the suffix: "tunedeck (1).deb". Attempt 0 returns `name`.
[[nodiscard]] QString numberedFileName(const QString &name, int attempt);

} // namespace tunedeck

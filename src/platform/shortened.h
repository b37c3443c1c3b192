// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// `text` for a log line: at most 200 characters. Texts from outside the program may be of any length.
[[nodiscard]] QString shortened(const QString &text);

} // namespace tunedeck

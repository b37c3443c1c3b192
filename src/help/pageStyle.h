// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QPalette;

namespace tunedeck {

/// The default style sheet of a page of text on the base colour of `palette`, which may be light or dark.
[[nodiscard]] QString pageStyle(const QPalette &palette);

} // namespace tunedeck

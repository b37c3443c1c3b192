// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QPalette;

namespace tunedeck {

/// The default style sheet of a page of text that lies on `palette`'s base, whether that is light or dark.
[[nodiscard]] QString pageStyle(const QPalette &palette);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace tunedeck {

/// The ink of the display, in the light and in the dark appearance: its glass is the same in both.
inline constexpr QColor lcdTextColor(0x35, 0x39, 0x2a);

} // namespace tunedeck

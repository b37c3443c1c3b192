// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace tunedeck {

/// The dark ink of the display. The glass is the same in the light and in the dark appearance.
inline constexpr QColor lcdTextColor(0x35, 0x39, 0x2a);

} // namespace tunedeck

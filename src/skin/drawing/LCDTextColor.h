// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace tunedeck {

/// The ink of the display: of the track in the light appearance, of its other texts in both, since the glass stays
/// light.
inline constexpr QColor lcdTextColor(0x35, 0x39, 0x2a);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace tunedeck {

/// The ink of the display: of the track in the light appearance, of its other texts in both, since the glass stays
/// light.
inline constexpr QColor lcdTextColor(0x35, 0x39, 0x2a);
/// The ink of all the display's texts for a user who wants high contrast. The light ink of the dark appearance could
/// not have it on light glass.
inline constexpr QColor fullLcdTextColor(0, 0, 0);

[[nodiscard]] constexpr const QColor &lcdInk(bool isHighContrast)
{
    return isHighContrast ? fullLcdTextColor : lcdTextColor;
}

} // namespace tunedeck

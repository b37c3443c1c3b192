// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

#include <cmath>

namespace tunedeck {

/// `font` at `scale` times its size, which stays one in points or in pixels.
[[nodiscard]] inline QFont scaledFont(QFont font, double scale)
{
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * scale);
    } else {
        font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * scale)));
    }
    return font;
}

} // namespace tunedeck

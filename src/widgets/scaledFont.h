// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

#include <cmath>

namespace tunedeck {

/// `font` at `scale` times its size. A size in points stays in points, a size in pixels in pixels.
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

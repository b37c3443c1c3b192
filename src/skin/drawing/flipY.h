// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>

namespace tunedeck {

/// Lets y count upwards from the lower edge of a view that is `height` points high, instead of downwards from the upper
/// edge. Calling it twice with the same height has no effect.
inline void flipY(QPainter &painter, double height)
{
    painter.translate(0, height);
    painter.scale(1, -1);
}

} // namespace tunedeck

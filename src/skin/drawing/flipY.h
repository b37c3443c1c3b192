// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>

namespace tunedeck {

/// From now on y counts upwards from the lower edge of a view that is `height` points high.
inline void turnUpwards(QPainter &painter, double height)
{
    painter.translate(0, height);
    painter.scale(1, -1);
}

} // namespace tunedeck

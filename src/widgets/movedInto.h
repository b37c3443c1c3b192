// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>

#include <algorithm>

namespace tunedeck {

/// The position at which `frame` is inside `area`. A frame that is too large begins where `area` begins.
[[nodiscard]] inline QPoint movedInto(const QRect &area, const QRect &frame)
{
    const int farthestX = area.right() - frame.width() + 1;
    const int farthestY = area.bottom() - frame.height() + 1;
    return {std::max(area.left(), std::min(frame.left(), farthestX)),
        std::max(area.top(), std::min(frame.top(), farthestY))};
}

} // namespace tunedeck

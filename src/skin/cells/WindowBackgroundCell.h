// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/MetalGroundState.h"

class QPainter;
class QRectF;

namespace tunedeck {

/// The painter of the main window's brushed metal.
class WindowBackgroundCell {
public:
    /// The height of the metal in points, whatever the frame's.
    static constexpr int height = 64;

    /// Draws along the lower edge of `frame`, in points and with y upwards.
    void draw(QPainter &painter, const QRectF &frame, const MetalGroundState &state) const;
};

} // namespace tunedeck

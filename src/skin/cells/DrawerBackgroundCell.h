// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/MetalGroundState.h"

class QPainter;
class QRectF;

namespace tunedeck {

/// Draws the metal of the drawer and the field sunk into it that the drawer's controls lie on.
class DrawerBackgroundCell {
public:
    /// How high the metal is, in points, whatever it is drawn into.
    static constexpr int height = 64;

    /// Draws along the lower edge of `frame`, in points and with y upwards.
    void draw(QPainter &painter, const QRectF &frame, const MetalGroundState &state) const;
};

} // namespace tunedeck

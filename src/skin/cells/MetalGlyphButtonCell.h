// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/MetalButtonCell.h"

namespace tunedeck {

/// Draws the metal buttons that show an engraved image and never a title.
class MetalGlyphButtonCell {
public:
    /// Draws into `frame`, in points and with y downwards. The image fills the middle, whatever its proportions.
    void draw(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/MetalButtonCell.h"

namespace tunedeck {

/// The painter of MetalGlyphButton: a metal button with an engraved image, and never with a title.
class MetalGlyphButtonCell {
public:
    /// Draws into `frame`, in points and with y downwards. The image is stretched over the middle.
    void draw(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const;
};

} // namespace tunedeck

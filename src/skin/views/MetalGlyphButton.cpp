// SPDX-License-Identifier: MIT
#include "skin/views/MetalGlyphButton.h"

#include "skin/cells/MetalGlyphButtonCell.h"

namespace tunedeck {

void MetalGlyphButton::drawFace(QPainter &painter, const MetalButtonState &state) const
{
    MetalGlyphButtonCell().draw(painter, rect(), state);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "skin/MetalGlyphButton.h"

#include "skin/MetalGlyphButtonCell.h"

namespace tunedeck {

void MetalGlyphButton::drawFace(QPainter &painter, const MetalButtonState &state) const
{
    MetalGlyphButtonCell().draw(painter, rect(), state);
}

} // namespace tunedeck

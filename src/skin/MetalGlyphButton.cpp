// SPDX-License-Identifier: MIT
#include "MetalGlyphButton.h"

#include "MetalGlyphButtonCell.h"

namespace tunedeck {

void MetalGlyphButton::drawFace(QPainter &painter, const MetalButtonState &state) const
{
    MetalGlyphButtonCell().draw(painter, rect(), state);
}

} // namespace tunedeck

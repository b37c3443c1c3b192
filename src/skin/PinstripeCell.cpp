// SPDX-License-Identifier: MIT
#include "PinstripeCell.h"

#include "Ink.h"

#include <QPainter>

namespace tunedeck {

void PinstripeCell::draw(QPainter &painter, const QRectF &dirty, double height, const PinstripeState &state) const
{
    constexpr double stripeHeight = 2;
    constexpr double stride = 4;
    if (!state.isKeyWindow || !state.drawsPinstripes || height <= 0) {
        return;
    }
    const QColor color = state.isDark ? white(0.02F) : black(0.02F);
    double y = 0;
    do {
        painter.fillRect(QRectF(0, y, dirty.width(), stripeHeight), color);
        y += stride;
    } while (y < height);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "skin/cells/PinstripeCell.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Ink.h"

#include <QPainter>

namespace tunedeck {

void PinstripeCell::draw(QPainter &painter, const QRectF &dirty, double height, const PinstripeState &state) const
{
    if (!state.isKeyWindow || !state.drawsPinstripes || height <= 0) {
        return;
    }
    const DevicePixels pixels(painter);
    const double stripeHeight = pixels.lineWidth(2);
    const double stride = 2 * stripeHeight;
    QRectF stripe = pixels.snapped({0, 0, dirty.width(), stripeHeight});
    stripe.setHeight(stripeHeight);
    const QColor color = state.isDark ? white(0.02F) : black(0.02F);
    double y = 0;
    do {
        painter.fillRect(stripe.translated(0, y), color);
        y += stride;
    } while (y < height);
}

} // namespace tunedeck

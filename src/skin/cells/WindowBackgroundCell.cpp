// SPDX-License-Identifier: MIT
#include "skin/cells/WindowBackgroundCell.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Gradient.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/bezelGradient.h"

#include <QPainter>
#include <QPainterPath>

namespace tunedeck {

namespace {
Gradient metal(const MetalGroundState &state)
{
    return state.looksActive() ? Gradient{{grey(0.81F), 0}, {grey(0.64F), 1}}
                               : Gradient{{grey(0.95F), 0}, {grey(0.85F), 1}};
}

void drawMetal(QPainter &painter, const QRectF &bounds, const MetalGroundState &state)
{
    constexpr double cornerRadius = 4;
    const double borderWidth = DevicePixels(painter).lineWidth(0.5);
    const QPainterPath outline = roundedRectangle(bounds, cornerRadius);
    metal(state).drawInPath(painter, outline, flippedDownwards);
    const QRectF inside = inset(bounds, borderWidth, borderWidth);
    painter.fillPath(between(outline, roundedRectangle(inside, cornerRadius - borderWidth)), black(0.15F));
}

void drawRim(QPainter &painter, const QRectF &bounds)
{
    const DevicePixels pixels(painter);
    const double thickness = pixels.hairline();
    const double margin = pixels.lineWidth(1);
    const QPainterPath rim =
        between(roundedRectangle(inset(bounds, margin, 0), 3), roundedRectangle(inset(bounds, margin, thickness), 1.5));
    metalEdgeLight().drawInPath(painter, rim, flippedDownwards);
}
} // namespace

void WindowBackgroundCell::draw(QPainter &painter, const QRectF &frame, const MetalGroundState &state) const
{
    const QRectF bounds = DevicePixels(painter).snapped({frame.topLeft(), QSizeF(frame.width(), height)});
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawMetal(painter, bounds, state);
    drawRim(painter, bounds);
    painter.restore();
}

} // namespace tunedeck

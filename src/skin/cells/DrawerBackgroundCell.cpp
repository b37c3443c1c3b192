// SPDX-License-Identifier: MIT
#include "skin/cells/DrawerBackgroundCell.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Gradient.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/bezelGradient.h"

#include <QPainter>
#include <QPainterPath>

namespace tunedeck {

namespace {
constexpr QColor deepField(108, 116, 129);
constexpr QColor mutedField(143, 151, 165);

/// A border of `width` along the inside of a rounded outline.
QPainterPath innerBorder(const QRectF &bounds, double radius, double width)
{
    return between(roundedRectangle(bounds, radius), roundedRectangle(inset(bounds, width, width), radius - width));
}

void drawBody(QPainter &painter, const QRectF &bounds, const MetalGroundState &state)
{
    constexpr double cornerRadius = 5;
    painter.fillPath(roundedRectangle(bounds, cornerRadius), grey(state.looksActive() ? 0.64F : 0.85F));
    painter.fillPath(innerBorder(bounds, cornerRadius, DevicePixels(painter).lineWidth(0.5)), black(0.15F));
}

void drawRim(QPainter &painter, const QRectF &bounds)
{
    const double thickness = DevicePixels(painter).lineWidth(1);
    const QPainterPath rim = between(roundedRectangle(bounds, 3), roundedRectangle(inset(bounds, 0, thickness), 3.5));
    metalEdgeLight().drawInPath(painter, rim, flippedDownwards);
}

/// The lit lip below the field, and the shade around it.
void drawWell(QPainter &painter, const QRectF &panel)
{
    Gradient({{white(0.55F), 0}, {black(0.225F), 0.15}})
        .drawInPath(painter, roundedRectangle(panel, 3), flippedUpwards);
}

void drawField(QPainter &painter, const QRectF &bounds, const MetalGroundState &state)
{
    constexpr double cornerRadius = 2.5;
    const double borderWidth = DevicePixels(painter).hairline();
    const Gradient field{{state.looksActive() ? deepField : mutedField, 0}, {mutedField, 1}};
    field.drawInPath(painter, roundedRectangle(bounds, cornerRadius), flippedDownwards);
    painter.fillPath(innerBorder(bounds, cornerRadius, borderWidth), black(0.42F));
}
} // namespace

void DrawerBackgroundCell::draw(QPainter &painter, const QRectF &frame, const MetalGroundState &state) const
{
    const DevicePixels pixels(painter);
    const QRectF whole(frame.topLeft(), QSizeF(frame.width(), height));
    const QRectF bounds = pixels.snapped(whole);
    const QRectF panel = pixels.snapped(inset(whole, 6, 3).translated(0, 3));
    const double lip = pixels.lineWidth(1);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawBody(painter, bounds, state);
    drawRim(painter, bounds);
    drawWell(painter, panel);
    drawField(painter, inset(panel, lip, lip), state);
    painter.restore();
}

} // namespace tunedeck

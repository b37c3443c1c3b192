// SPDX-License-Identifier: MIT
#include "skin/cells/LCDBackgroundCell.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Gradient.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/Shadow.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/bezelGradient.h"

#include <QPainter>
#include <QPainterPath>

namespace tunedeck {

namespace {
constexpr double glassRadius = 3;
constexpr float bezelAlpha = 0.42F;

/// A reflection that ends in the middle.
Gradient gloss(bool dark)
{
    return {{white(dark ? 0.05F : 0.667F), 0}, {white(dark ? 0.0333F : 0.1F), 0.5}, {black(0.025F), 0.5},
        {black(dark ? 0.01F : 0.03F), 1}};
}

void drawGlass(QPainter &painter, const QRectF &bounds)
{
    const double lineWidth = DevicePixels(painter).hairline();
    painter.fillPath(roundedRectangle(bounds, glassRadius), QColor::fromRgbF(0.91F, 0.92F, 0.81F));
    painter.fillPath(roundedFrame(bounds, glassRadius, lineWidth), black(0.2F));
}

/// The clip hides the outer half of the line, which is outside the glass.
void drawInnerEdge(QPainter &painter, const QRectF &bounds, bool dark)
{
    painter.save();
    painter.setClipPath(roundedRectangle(bounds, glassRadius), Qt::IntersectClip);
    const double lineWidth = DevicePixels(painter).lineWidth(1);
    painter.fillPath(roundedFrame(bounds, glassRadius, lineWidth), black(dark ? 0.3F : 0.25F));
    painter.restore();
}
} // namespace

void LCDBackgroundCell::draw(QPainter &painter, const QRectF &frame, const LCDBackgroundState &state) const
{
    const DevicePixels pixels(painter);
    const QRectF bounds = pixels.snapped(frame);
    const double bezelWidth = pixels.lineWidth(1);
    const QRectF glassBounds = inset(bounds, bezelWidth, bezelWidth);
    const QPainterPath glass = roundedRectangle(glassBounds, glassRadius);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    bezelGradient(bezelAlpha, state.isDark, painter.device()->devicePixelRatioF())
        .drawInPath(painter, roundedRectangle(bounds, 4), flippedDownwards);
    drawGlass(painter, glassBounds);
    if (state.isDark) {
        fillWithScanLines(painter, glass, frame.width(), true);
    }
    fillWithInnerShadow(painter, glass, {.offset = {0, -1.5}, .blurRadius = 1.25, .color = black(0.333F)});
    gloss(state.isDark)
        .drawInPath(painter,
            state.isDark ? roundedRectangle(inset(glassBounds, bezelWidth, bezelWidth), glassRadius) : glass,
            flippedDownwards);
    drawInnerEdge(painter, glassBounds, state.isDark);
    painter.restore();
}

} // namespace tunedeck

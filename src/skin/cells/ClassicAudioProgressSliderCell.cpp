// SPDX-License-Identifier: MIT
#include "skin/cells/ClassicAudioProgressSliderCell.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/LCDTextColor.h"
#include "skin/drawing/Shapes.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tunedeck {

namespace {
/// A line of one point along the inside of `rect`. QPainter draws a pen of that width less exactly.
QPainterPath hairline(const QRectF &rect, const DevicePixels &pixels)
{
    const QRectF outside = pixels.snapped(rect);
    const double width = pixels.lineWidth(1);
    QPainterPath path;
    path.addRect(outside);
    path.addRect(inset(outside, width, width));
    return path;
}

/// One point on, one point off. QPainter would count a pen's dashes in the pen's width.
QPainterPath dottedBand(const QRectF &band, const DevicePixels &pixels)
{
    if (band.width() <= 0) {
        return {};
    }
    const QRectF crisp = pixels.snapped(band);
    const double dot = pixels.lineWidth(1);
    QPainterPath path;
    for (double x = crisp.left(); x < crisp.right(); x += 2 * dot) {
        path.addRect(x, crisp.top(), std::min(crisp.right() - x, dot), crisp.height());
    }
    return path;
}
} // namespace

void ClassicAudioProgressSliderCell::drawBarInside(
    QPainter &painter, const QRectF &bar, const QRectF &knob, bool enabled, bool isHighContrast)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels pixels(painter);
    painter.fillPath(hairline(inset(bar, 2, -3), pixels), lcdInk(isHighContrast));
    if (enabled) {
        const bool isAtStart = knob.x() < 1;
        const double bandWidth = painter.device()->devicePixelRatioF() > 1 ? 6 : 5;
        const double start = bar.left() + (isAtStart ? 3 : 1.5);
        const QRectF band(start, bar.center().y() - bandWidth / 2, knob.center().x() - start, bandWidth);
        painter.fillPath(dottedBand(band, pixels), withAlpha(lcdInk(isHighContrast), isHighContrast ? 1.0F : 0.46F));
    }
    painter.restore();
}

void ClassicAudioProgressSliderCell::drawKnob(QPainter &painter, const QRectF &knob, bool enabled, bool isHighContrast)
{
    if (!enabled) {
        return;
    }
    const QRectF bounds = inset(knob, 4.5, 4.5);
    const QPointF centre = bounds.center();
    QPainterPath diamond({bounds.left(), centre.y()});
    diamond.lineTo(centre.x(), bounds.bottom());
    diamond.lineTo(bounds.right(), centre.y());
    diamond.lineTo(centre.x(), bounds.top());
    diamond.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(diamond, lcdInk(isHighContrast));
    painter.restore();
}

} // namespace tunedeck

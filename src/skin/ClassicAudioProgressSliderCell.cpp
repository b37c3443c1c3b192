// SPDX-License-Identifier: MIT
#include "ClassicAudioProgressSliderCell.h"

#include "Ink.h"
#include "LCDTextColor.h"
#include "Shapes.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tunedeck {

namespace {
/// The outline of `rect`, one point wide and half of it inside. A pen of that width is drawn less exactly.
QPainterPath hairline(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(inset(rect, -0.5, -0.5));
    path.addRect(inset(rect, 0.5, 0.5));
    return path;
}

/// One point on, one point off. A pen's dashes are counted in its own width.
QPainterPath dottedBand(QPointF start, double end, double width)
{
    QPainterPath path;
    for (double x = start.x(); x < end; x += 2) {
        path.addRect(x, start.y() - width / 2, std::min(end - x, 1.0), width);
    }
    return path;
}
} // namespace

void ClassicAudioProgressSliderCell::drawBarInside(
    QPainter &painter, const QRectF &bar, const QRectF &knob, bool enabled)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(hairline(inset(bar, 2.5, -2.5)), lcdTextColor);
    if (enabled) {
        const bool isAtStart = knob.x() < 1;
        const double bandWidth = painter.device()->devicePixelRatioF() > 1 ? 6 : 5;
        const QPointF start(bar.left() + (isAtStart ? 3 : 1.5), bar.center().y());
        painter.fillPath(dottedBand(start, knob.center().x(), bandWidth), withAlpha(lcdTextColor, 0.46F));
    }
    painter.restore();
}

void ClassicAudioProgressSliderCell::drawKnob(QPainter &painter, const QRectF &knob, bool enabled)
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
    painter.fillPath(diamond, lcdTextColor);
    painter.restore();
}

} // namespace tunedeck

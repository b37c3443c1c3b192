// SPDX-License-Identifier: MIT
#include "skin/drawing/engraving.h"

#include "skin/drawing/Ink.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace tunedeck {

namespace {
/// The nearest whole device pixel, which keeps a text crisp.
QPointF snapped(QPointF position, double scale)
{
    return {std::round(position.x() * scale) / scale, std::round(position.y() * scale) / scale};
}
} // namespace

QColor metalTitleColor(bool isPressed, float alpha)
{
    return grey(isPressed ? 0.88F : 0.18F, alpha);
}

Shadow metalTitleShadow(bool isPressed, double scale)
{
    return {.offset = {0, scale > 1 ? -0.75 : -1}, .blurRadius = 0, .color = isPressed ? black(0.333F) : white(0.333F)};
}

Shadow castBy(const QColor &color, Shadow shadow)
{
    shadow.color.setAlphaF(shadow.color.alphaF() * color.alphaF());
    return shadow;
}

void drawEngravedText(QPainter &painter, const QRectF &frame, const EngravedText &text)
{
    const QFontMetricsF metrics(text.font, painter.device());
    const QString line = metrics.elidedText(text.text, Qt::ElideRight, frame.width());
    if (line.isEmpty()) {
        return;
    }
    const double slack = frame.width() - metrics.horizontalAdvance(line);
    const double x = frame.left() + (text.alignment.testFlag(Qt::AlignHCenter) ? slack / 2 : 0);
    const double y = frame.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    const QPointF baseline = snapped({x, y}, painter.device()->devicePixelRatioF());
    QPainterPath outlines;
    outlines.setFillRule(Qt::WindingFill);
    outlines.addText(baseline, text.font, line);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawShadow(painter, outlines, castBy(text.color, text.shadow));
    painter.setFont(text.font);
    painter.setPen(text.color);
    painter.drawText(baseline, line);
    painter.restore();
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "skin/cells/ShadowViewCell.h"

#include "skin/drawing/Ink.h"
#include "skin/drawing/Shadow.h"
#include "skin/drawing/Shapes.h"

#include <QPainter>
#include <QPainterPath>

namespace tunedeck {

namespace {
constexpr double overhang = 4;
constexpr double thickness = 15;
constexpr double stripBottom = 15;
/// The shadow's standard deviation is 2.5 points.
constexpr double blurRadius = 5;

QPainterPath rectangle(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}
} // namespace

QRectF ShadowViewCell::strip(const QRectF &frame)
{
    return {-overhang, stripBottom, frame.width() + 2 * overhang, thickness};
}

void ShadowViewCell::draw(QPainter &painter, const QRectF &frame) const
{
    drawShadow(painter, frame);
    painter.fillRect(strip(frame), Qt::black);
}

void ShadowViewCell::drawShadow(QPainter &painter, const QRectF &frame) const
{
    const QRectF strip = this->strip(frame);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(rectangle(frame) - rectangle(strip), Qt::IntersectClip);
    tunedeck::drawShadow(
        painter, rectangle(strip), {.offset = {0, -4}, .blurRadius = blurRadius, .color = black(0.48F)});
    painter.restore();
}

} // namespace tunedeck

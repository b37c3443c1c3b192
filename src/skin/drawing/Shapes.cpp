// SPDX-License-Identifier: MIT
#include "skin/drawing/Shapes.h"

namespace tunedeck {

namespace {
/// Gives lines of one pixel for a quarter of a circle of 20 points at scale 2.
constexpr int linesOfACurve = 64;

void addLines(QPainterPath &path, QPointF control1, QPointF control2, QPointF end)
{
    const QPointF start = path.currentPosition();
    for (int line = 1; line < linesOfACurve; ++line) {
        const double t = static_cast<double>(line) / linesOfACurve;
        const double s = 1 - t;
        path.lineTo(s * s * s * start + 3 * s * s * t * control1 + 3 * s * t * t * control2 + t * t * t * end);
    }
    path.lineTo(end);
}
} // namespace

QPainterPath withFineCurves(const QPainterPath &path)
{
    QPainterPath fine;
    fine.setFillRule(path.fillRule());
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            fine.moveTo(element);
        } else if (element.isLineTo()) {
            fine.lineTo(element);
        } else {
            addLines(fine, element, path.elementAt(i + 1), path.elementAt(i + 2));
            i += 2;
        }
    }
    return fine;
}

QPainterPath oval(const QRectF &bounds)
{
    QPainterPath path;
    path.addEllipse(bounds);
    return withFineCurves(path);
}

QPainterPath roundedRectangle(const QRectF &bounds, double radius)
{
    QPainterPath path;
    path.addRoundedRect(bounds, radius, radius);
    return withFineCurves(path);
}

QPainterPath between(const QPainterPath &outline, const QPainterPath &other)
{
    QPainterPath path = outline;
    path.setFillRule(Qt::WindingFill);
    path.addPath(other.toReversed());
    return path;
}

QPainterPath roundedFrame(const QRectF &bounds, double radius, double width)
{
    const double half = width / 2;
    return between(roundedRectangle(inset(bounds, -half, -half), radius + half),
        roundedRectangle(inset(bounds, half, half), radius - half));
}

QPainterPath capsule(const QRectF &bounds)
{
    return roundedRectangle(bounds, bounds.height() / 2);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "skin/looks/FocusPointers.h"

#include "skin/drawing/LCDTextColor.h"
#include "skin/drawing/Shapes.h"
#include "skin/looks/skinLooks.h"

#include <QPainter>
#include <QPainterPath>

#include <utility>

namespace tunedeck {

namespace {
/// In points. Between the control and the texts beside it there are six.
constexpr double distance = 1;
constexpr double length = 4;
constexpr double halfHeight = 4;

QPainterPath pointer(QPointF tip, double base)
{
    QPainterPath path(tip);
    path.lineTo(base, tip.y() - halfHeight);
    path.lineTo(base, tip.y() + halfHeight);
    path.closeSubpath();
    return path;
}
} // namespace

FocusPointers::FocusPointers(QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds)
    : FocusMark(control, environment, std::move(bounds))
{
}

QRectF FocusPointers::area(const QRectF &control) const
{
    return inset(control, -(distance + length), 0);
}

void FocusPointers::paint(QPainter &painter, const QRectF &control) const
{
    const double y = control.center().y();
    const double left = control.left() - distance;
    const double right = control.right() + distance;
    const QColor ink = lcdInk(isHighContrast(environment()));
    painter.fillPath(pointer({left, y}, left - length), ink);
    painter.fillPath(pointer({right, y}, right + length), ink);
}

} // namespace tunedeck

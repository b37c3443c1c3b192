// SPDX-License-Identifier: MIT
#include "skin/looks/FocusRing.h"

#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/looks/skinLooks.h"

#include <QPainter>
#include <QPainterPath>

#include <utility>

namespace tunedeck {

namespace {
/// Distances in points from the control's edge outwards. The ring keeps clear of the edge: its pixels are the
/// control's.
constexpr double ringStart = 1;
constexpr double ringEnd = 3;
constexpr double rimEnd = 4;
} // namespace

FocusRing::FocusRing(
    QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds, std::optional<double> cornerRadius)
    : FocusMark(control, environment, std::move(bounds))
    , m_cornerRadius(cornerRadius)
{
}

QRectF FocusRing::area(const QRectF &control) const
{
    return inset(control, -rimEnd, -rimEnd);
}

void FocusRing::paint(QPainter &painter, const QRectF &control) const
{
    const bool isFull = isHighContrast(environment());
    // The light rim sets the accent off against the drawer, which is nearly as dark.
    painter.fillPath(band(control, ringEnd, rimEnd), white(isFull ? 1.0F : 0.92F));
    const QColor accent = withAlpha(accentColor(isGraphite(environment())), 0.95F);
    painter.fillPath(band(control, ringStart, ringEnd), isFull ? QColor(Qt::black) : accent);
}

QPainterPath FocusRing::band(const QRectF &control, double start, double end) const
{
    QPainterPath path = outline(control, end);
    path.addPath(outline(control, start));
    return path;
}

QPainterPath FocusRing::outline(const QRectF &control, double distance) const
{
    const QRectF bounds = inset(control, -distance, -distance);
    return m_cornerRadius ? roundedRectangle(bounds, *m_cornerRadius + distance) : capsule(bounds);
}

} // namespace tunedeck

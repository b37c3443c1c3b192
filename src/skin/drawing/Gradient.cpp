// SPDX-License-Identifier: MIT
#include "skin/drawing/Gradient.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {
QBrush brushOf(QGradient &&gradient, const QGradientStops &stops)
{
    gradient.setInterpolationMode(QGradient::ComponentInterpolation);
    gradient.setStops(stops);
    return {gradient};
}

double distanceToFarthestCorner(QPointF from, const QRectF &bounds)
{
    const double dx = std::max(from.x() - bounds.left(), bounds.right() - from.x());
    const double dy = std::max(from.y() - bounds.top(), bounds.bottom() - from.y());
    return std::hypot(dx, dy);
}
} // namespace

Gradient::Gradient(std::initializer_list<Stop> stops)
{
    for (const Stop &stop : stops) {
        double location = stop.location;
        if (!m_stops.isEmpty()) {
            // QGradient keeps only the second of two stops at the same location.
            location = std::max(location, std::nextafter(m_stops.constLast().first, 1.0));
        }
        m_stops.append({location, stop.color});
    }
}

QBrush Gradient::linearBrush(const QRectF &bounds, double angle) const
{
    const double radians = qDegreesToRadians(angle);
    const QPointF direction(std::cos(radians), std::sin(radians));
    const double reach = (std::abs(direction.x()) * bounds.width() + std::abs(direction.y()) * bounds.height()) / 2;
    const QPointF centre = bounds.center();
    return brushOf(QLinearGradient(centre - direction * reach, centre + direction * reach), m_stops);
}

QBrush Gradient::radialBrush(const QRectF &bounds, QPointF relativeCenter) const
{
    const QPointF startCentre = bounds.center();
    const QPointF endCentre =
        startCentre + QPointF(relativeCenter.x() * bounds.width() / 2, relativeCenter.y() * bounds.height() / 2);
    return brushOf(QRadialGradient(endCentre, distanceToFarthestCorner(endCentre, bounds), startCentre), m_stops);
}

void Gradient::drawInPath(QPainter &painter, const QPainterPath &path, double angle) const
{
    painter.fillPath(path, linearBrush(path.boundingRect(), angle));
}

void Gradient::drawInPath(QPainter &painter, const QPainterPath &path, QPointF relativeCenter) const
{
    painter.fillPath(path, radialBrush(path.boundingRect(), relativeCenter));
}

} // namespace tunedeck

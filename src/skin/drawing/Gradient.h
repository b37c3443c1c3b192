// SPDX-License-Identifier: MIT
#pragma once

#include <QBrush>
#include <QColor>
#include <QGradient>
#include <QPointF>
#include <QRectF>

#include <initializer_list>

class QPainter;
class QPainterPath;

namespace tunedeck {

/// The angle of a gradient from the upper edge to the lower one, in degrees.
inline constexpr double downwards = 90;
/// From the upper edge to the lower one if y counts upwards.
inline constexpr double flippedDownwards = -90;
/// From the lower edge to the upper one if y counts upwards.
inline constexpr double flippedUpwards = 90;

/// Colours at locations from 0 to 1, interpolated with straight (not premultiplied) components. Two stops at the same
/// location make a hard edge; before the first and after the last stop the end colours go on.
class Gradient {
public:
    struct Stop {
        QColor color;
        double location = 0;
    };

    /// In ascending order of their locations.
    Gradient(std::initializer_list<Stop> stops);

    /// The brush that fills `bounds` along a line through its centre. `angle` is in degrees: 0 is towards larger x, 90
    /// towards larger y. Location 0 and 1 fall on the corners farthest back and farthest forward along the line.
    [[nodiscard]] QBrush linearBrush(const QRectF &bounds, double angle) const;
    /// The brush that fills `bounds` from its centre to the circle that covers it and whose centre is moved by
    /// `relativeCenter`, whose units are half the bounds' width and half their height.
    [[nodiscard]] QBrush radialBrush(const QRectF &bounds, QPointF relativeCenter) const;

    /// Fills `path`, over its tight bounding rectangle, with linearBrush().
    void drawInPath(QPainter &painter, const QPainterPath &path, double angle) const;
    /// The same with radialBrush().
    void drawInPath(QPainter &painter, const QPainterPath &path, QPointF relativeCenter) const;

private:
    QGradientStops m_stops;
};

} // namespace tunedeck

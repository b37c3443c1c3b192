// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>

class QPainter;

namespace tunedeck {

/// The layout of a metal control's bezel in its frame, in points.
struct MetalBezel {
    /// x on the left and right, y above and below.
    QPointF highlightInset;
    QPointF rimInset;
    /// The distance of the rim and its face above the middle.
    double lift = 0;
};

/// Draws a dark rim around a face of light metal, and the lit lip under the rim. y counts downwards.
void drawMetalBezel(QPainter &painter, const QRectF &frame, const MetalBezel &bezel, bool isPressed);

inline constexpr double metalRimRadius = 3.25;
[[nodiscard]] QRectF metalRim(const QRectF &frame, const MetalBezel &bezel);
/// The rectangle inside the rim.
[[nodiscard]] QRectF metalFace(const QRectF &frame, const MetalBezel &bezel);

} // namespace tunedeck

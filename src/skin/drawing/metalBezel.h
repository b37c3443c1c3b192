// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>

class QPainter;

namespace tunedeck {

/// How the parts of a metal control's bezel lie in its frame, in points.
struct MetalBezel {
    /// At each side, and above and below.
    QPointF highlightInset;
    QPointF rimInset;
    /// How far the rim and the face in it lie above the middle.
    double lift = 0;
};

/// Draws a dark rim around a face of light metal, and the lit lip under the rim. y counts downwards.
void drawMetalBezel(QPainter &painter, const QRectF &frame, const MetalBezel &bezel, bool isPressed);

inline constexpr double metalRimRadius = 3.25;
[[nodiscard]] QRectF metalRim(const QRectF &frame, const MetalBezel &bezel);
/// The rim's rectangle, less the rim.
[[nodiscard]] QRectF metalFace(const QRectF &frame, const MetalBezel &bezel);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tunedeck {

/// `rect`, smaller by `dx` points at the left and right and by `dy` at the top and bottom.
[[nodiscard]] inline QRectF inset(const QRectF &rect, double dx, double dy)
{
    return rect.adjusted(dx, dy, -dx, -dy);
}

/// `path` with short lines for its curves. QPainter bends a curve no finer than a sixth of a pixel, which shows at the
/// edge of a shape as small as the skin's.
[[nodiscard]] QPainterPath withFineCurves(const QPainterPath &path);

[[nodiscard]] QPainterPath oval(const QRectF &bounds);
[[nodiscard]] QPainterPath roundedRectangle(const QRectF &bounds, double radius);
/// The area inside exactly one of two outlines. The outlines turn opposite ways: if they turned the same way, QPainter
/// would get the coverage of a pixel that both cross wrong.
[[nodiscard]] QPainterPath between(const QPainterPath &outline, const QPainterPath &other);
/// The area of a line of `width` along the outline of a rounded rectangle.
[[nodiscard]] QPainterPath roundedFrame(const QRectF &bounds, double radius, double width);
/// A rectangle whose corners are rounded by half its height.
[[nodiscard]] QPainterPath capsule(const QRectF &bounds);

} // namespace tunedeck

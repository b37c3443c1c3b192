// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QTransform>

class QPainter;

namespace tunedeck {

/// Keeps straight edges crisp where a point is not a whole number of a painter's device pixels. At a whole scale
/// nothing changes: an edge between pixels is intended there.
class DevicePixels {
public:
    explicit DevicePixels(const QPainter &painter);

    /// `rect`, in points, with each edge moved to the nearest device pixel; no side becomes shorter than one.
    [[nodiscard]] QRectF snapped(const QRectF &rect) const;
    /// The width in points at which to draw a line of `points`. At a fractional scale it is rounded down to whole
    /// pixels, and is at least one. A crisp line looks stronger than a soft one, so a line rounded up would look heavy.
    [[nodiscard]] double lineWidth(double points) const;
    /// The width in points of the thinnest line of the skin: half a point, or one where a point has a single pixel.
    [[nodiscard]] double hairline() const;

private:
    QTransform m_toDevice;
    double m_scale = 1;
    double m_deviceScale = 1;
    bool m_isWhole = true;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QTransform>

class QPainter;

namespace tunedeck {

/// Keeps straight edges crisp where a point is not a whole number of a painter's device pixels. At a whole scale all
/// stays as it is: what lies between pixels there is meant to.
class DevicePixels {
public:
    explicit DevicePixels(const QPainter &painter);

    /// `rect`, in points, with each edge moved to the nearest device pixel; no side becomes shorter than one.
    [[nodiscard]] QRectF snapped(const QRectF &rect) const;
    /// The width in points of a line that is to be `points` wide: at a fractional scale the whole pixels in it, and at
    /// least one. A line that was rounded up would look heavy, as a crisp one looks stronger than a soft one.
    [[nodiscard]] double lineWidth(double points) const;

private:
    QTransform m_toDevice;
    double m_scale = 1;
    bool m_isWhole = true;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

class QPainter;

namespace tunedeck {

/// The painter of a black strip and the soft shadow that it casts downwards, in points and with y upwards.
class ShadowViewCell {
public:
    /// The strip across `frame`, which begins at (0, 0): it reaches beyond both sides, so that the shadow does not
    /// fade there.
    [[nodiscard]] static QRectF strip(const QRectF &frame);

    void draw(QPainter &painter, const QRectF &frame) const;
    /// Draws only the part of the shadow that the strip does not cover.
    void drawShadow(QPainter &painter, const QRectF &frame) const;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

class QPainter;

namespace tunedeck {

/// Draws a black strip and the soft shadow that it casts downwards. In points and with y upwards.
class ShadowViewCell {
public:
    /// The strip across `frame`, which begins at (0, 0): it reaches beyond both sides, so that the shadow does not
    /// fade there.
    [[nodiscard]] static QRectF strip(const QRectF &frame);

    void draw(QPainter &painter, const QRectF &frame) const;
    /// What can be seen of the shadow where the strip covers it.
    void drawShadow(QPainter &painter, const QRectF &frame) const;
};

} // namespace tunedeck

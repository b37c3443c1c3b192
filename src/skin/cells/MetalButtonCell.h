// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace tunedeck {

/// The state that the look of a metal button depends on.
struct MetalButtonState {
    QString title = {};
    QFont font = {};
    /// The name of a ResourceImage; empty for none.
    QString image = {};
    bool isPressed = false;
    bool isEnabled = true;
    bool isMainWindow = false;

    bool operator==(const MetalButtonState &) const = default;
};

/// The painter of the metal push buttons, in points and with y downwards.
class MetalButtonCell {
public:
    /// Draws the bezel and, in its middle, the image or else the title.
    void draw(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const;

    /// The bezel's outline; its corners are rounded by metalRimRadius.
    [[nodiscard]] static QRectF rim(const QRectF &frame);

    void drawBezel(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const;
    void drawTitle(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace tunedeck {

/// The state that the look of a metal pop-up button depends on.
struct MetalPopupButtonState {
    QString title = {};
    QFont font = {};
    bool isPressed = false;
    bool isEnabled = true;
    bool isMainWindow = false;

    bool operator==(const MetalPopupButtonState &) const = default;
};

/// The painter of the metal pop-up buttons, in points and with y downwards.
class MetalPopupButtonCell {
public:
    /// Draws the bezel with its arrows and the title. The arrows follow the width of `frame` and not its position: they
    /// are on the face, and not on the rim, if the frame begins at x = 9. They suit a height of 22.
    void draw(QPainter &painter, const QRectF &frame, const MetalPopupButtonState &state) const;

    /// The bezel's outline; its corners are rounded by metalRimRadius.
    [[nodiscard]] static QRectF rim(const QRectF &frame);

    void drawBezel(QPainter &painter, const QRectF &frame, const MetalPopupButtonState &state) const;
    void drawTitle(QPainter &painter, const QRectF &frame, const MetalPopupButtonState &state) const;
};

} // namespace tunedeck

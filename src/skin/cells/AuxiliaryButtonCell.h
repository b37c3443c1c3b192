// SPDX-License-Identifier: MIT
#pragma once

class QPainter;
class QRectF;

namespace tunedeck {

struct AuxiliaryButtonState {
    bool isPressed = false;

    bool operator==(const AuxiliaryButtonState &) const = default;
};

/// The painter of AuxiliaryButton: an olive oval with a white triangle.
class AuxiliaryButtonCell {
public:
    /// Draws into `frame`, which begins at (0, 0), in points and with y downwards. The triangle suits a frame of 12 by
    /// 11.
    void draw(QPainter &painter, const QRectF &frame, const AuxiliaryButtonState &state) const;
};

} // namespace tunedeck

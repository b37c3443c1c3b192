// SPDX-License-Identifier: MIT
#pragma once

class QPainter;
class QRectF;

namespace tunedeck {

struct PinstripeState {
    bool isKeyWindow = false;
    bool drawsPinstripes = true;
    bool isDark = false;
};

/// The painter of faint stripes, 2 points high every 4 points, which show while a window of the program is key. At a
/// fractional scale both measures are rounded down to device pixels, so that all stripes look alike.
class PinstripeCell {
public:
    /// Draws from (0, 0) on, in points and with y downwards, as wide as `dirty` and as far as `height` reaches; the
    /// last stripe may reach farther.
    void draw(QPainter &painter, const QRectF &dirty, double height, const PinstripeState &state) const;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

class QPainter;
class QRectF;

namespace tunedeck {

struct LCDBackgroundState {
    bool isDark = false;

    bool operator==(const LCDBackgroundState &) const = default;
};

/// The painter of the display's glass, which is sunk into the metal. The dark appearance does not darken the glass; it
/// adds scan lines and takes gloss away.
class LCDBackgroundCell {
public:
    /// Draws into `frame`, which begins at (0, 0), in points and with y upwards.
    void draw(QPainter &painter, const QRectF &frame, const LCDBackgroundState &state) const;
};

} // namespace tunedeck

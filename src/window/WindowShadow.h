// SPDX-License-Identifier: MIT
#pragma once

#include <QMargins>
#include <QPixmap>

class QPainter;
class QRect;

namespace tunedeck {

/// The soft shadow around a rounded window that is lit from above.
class WindowShadow {
public:
    /// The shadow's width on each side of the window, in points.
    static constexpr QMargins reach{14, 9, 14, 19};

    /// `cornerRadius` is that of the window, in points.
    explicit WindowShadow(int cornerRadius);

    /// Paints the shadow around `window`, a rectangle in points, and nothing inside it.
    void draw(QPainter &painter, const QRect &window);

private:
    [[nodiscard]] QPixmap smallest(double scale) const;

    int m_cornerRadius;
    /// The shadow of a window that has corners only. Larger windows have the same corners and longer sides.
    QPixmap m_smallest;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QMargins>
#include <QPixmap>

class QPainter;
class QRect;

namespace tunedeck {

/// The soft shadow that a rounded window casts around itself, as if lit from above.
class WindowShadow {
public:
    /// How far it reaches, in points.
    static constexpr QMargins reach{14, 9, 14, 19};

    /// `cornerRadius` is the window's, in points.
    explicit WindowShadow(int cornerRadius);

    /// Paints it around `window`, which it leaves as it is.
    void draw(QPainter &painter, const QRect &window);

private:
    [[nodiscard]] QPixmap smallest(double scale) const;

    int m_cornerRadius;
    /// Of a window that is nothing but its corners: all others differ from it in how long their sides are.
    QPixmap m_smallest;
};

} // namespace tunedeck

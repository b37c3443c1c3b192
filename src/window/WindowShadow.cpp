// SPDX-License-Identifier: MIT
#include "window/WindowShadow.h"

#include "skin/drawing/Shadow.h"

#include <QPainter>
#include <QPainterPath>

#include <array>

namespace tunedeck {

namespace {
/// A wide shadow, and a narrow one that sets a light window off from a light desktop.
const std::array shadows{Shadow{{0, -5}, 13, QColor(0, 0, 0, 105)}, Shadow{{0, -1}, 3, QColor(0, 0, 0, 70)}};

/// Where a side of the shadow is cut: into a corner, a middle that can be stretched, and another corner.
struct Cut {
    std::array<int, 4> at;
};

Cut cutOf(int length, int before, int after)
{
    return {{0, before, length - after, length}};
}
} // namespace

WindowShadow::WindowShadow(int cornerRadius)
    : m_cornerRadius(cornerRadius)
{
}

void WindowShadow::draw(QPainter &painter, const QRect &window)
{
    const double scale = painter.device()->devicePixelRatioF();
    if (m_smallest.isNull() || m_smallest.devicePixelRatio() != scale) {
        m_smallest = smallest(scale);
    }
    const QSize small = m_smallest.deviceIndependentSize().toSize();
    const QRect whole = window.marginsAdded(reach);
    const int side = (small.width() - 1) / 2;
    const int end = (small.height() - 1) / 2;
    const Cut fromX = cutOf(small.width(), side, side);
    const Cut fromY = cutOf(small.height(), end, end);
    const Cut toX = cutOf(whole.width(), side, side);
    const Cut toY = cutOf(whole.height(), end, end);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF target(whole.left() + toX.at[column], whole.top() + toY.at[row],
                toX.at[column + 1] - toX.at[column], toY.at[row + 1] - toY.at[row]);
            const QRectF source(fromX.at[column] * scale, fromY.at[row] * scale,
                (fromX.at[column + 1] - fromX.at[column]) * scale, (fromY.at[row + 1] - fromY.at[row]) * scale);
            painter.drawPixmap(target, m_smallest, source);
        }
    }
}

QPixmap WindowShadow::smallest(double scale) const
{
    // The middle is one point long. Neither corner changes the shadow there, so it can be stretched.
    const int straight = 2 * (m_cornerRadius + reach.bottom()) + 1;
    const QRect window(reach.left(), reach.top(), straight, straight);
    const QSize size = window.marginsAdded(reach).size();
    QPixmap pixmap((QSizeF(size) * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);

    QPainterPath outline;
    outline.addRoundedRect(window, m_cornerRadius, m_cornerRadius);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Shadow &shadow : shadows) {
        drawShadow(painter, outline, shadow);
    }
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outline, Qt::black);
    return pixmap;
}

} // namespace tunedeck

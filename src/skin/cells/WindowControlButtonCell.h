// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/WindowControlButtonStyle.h"
#include "skin/drawing/Shadow.h"

#include <QRectF>

class QPainter;

namespace tunedeck {

/// The state that the look of a window button depends on.
struct WindowControlButtonState {
    WindowControlButtonStyle controlStyle = WindowControlButtonStyle::close;
    bool isPressed = false;
    bool isHovered = false;
    bool isDark = false;
    bool isGraphite = false;

    bool operator==(const WindowControlButtonState &) const = default;
};

/// The painter of the gems that close, minimise and maximise the window.
class WindowControlButtonCell {
public:
    /// Draws into `frame`, in points and with y upwards. The symbol suits a frame of 14 by 14 at the origin.
    void draw(QPainter &painter, const QRectF &frame, const WindowControlButtonState &state) const;

private:
    Shadow m_innerShadow{.offset = {0, -2}, .blurRadius = 2, .color = QColor::fromRgbF(0, 0, 0, 0.74F)};
    Shadow m_lowerInnerShadow{.offset = {0, 0.5}, .blurRadius = 1, .color = QColor::fromRgbF(0, 0, 0, 0.74F)};
};

} // namespace tunedeck

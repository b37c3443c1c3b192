// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <Qt>

#include <optional>

class QWidget;

namespace tunedeck {

/// Drags of a frameless window with the mouse: its background moves it, and its left and right edges can resize
/// it in width.
/// The window manager carries a drag out where it supports that; elsewhere the window follows the pointer by itself,
/// within its minimum and maximum width.
///
/// All lengths are in points. `position` is in the window, `content` is the part of the window inside its shadow.
class WindowDrag {
public:
    /// The edges begin this far inside the content, and reach outwards to the end of the window.
    static constexpr int edgeWidth = 5;

    /// `window` must outlive the drag.
    explicit WindowDrag(QWidget &window);

    /// Shows the resize cursor on an edge, the arrow elsewhere.
    void showCursor(QPoint position, const QRect &content);
    /// The left button goes down. A drag begins once the pointer has moved by Qt's start distance.
    void press(QPoint position, const QRect &content);
    /// Like press(), for a window that no edge resizes.
    void pressBackground(QPoint position);
    /// The pointer moves while the button is down. `pointer` is its position on the screen.
    void move(QPoint position, QPoint pointer);
    void end();

private:
    struct Press {
        QPoint position;
        Qt::Edges edges; ///< no edge means the whole window
    };

    /// A drag that the window manager has not taken over.
    struct OwnDrag {
        Qt::Edges edges;
        QPoint start; ///< the press, on the screen
        QRect frame; ///< the window at the press, on the screen
    };

    void follow(QPoint pointer);

    QWidget &m_window;
    std::optional<Press> m_press;
    std::optional<OwnDrag> m_ownDrag;
};

} // namespace tunedeck

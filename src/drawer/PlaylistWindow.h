// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QWidget>

#include <optional>

namespace tunedeck {

/// A window of the drawer's own, frameless like the player's and moved by its background, that can be key and main
/// (see WindowActivation). The program creates none: its drawer is part of the main window.
class PlaylistWindow : public QWidget {
    Q_OBJECT

public:
    explicit PlaylistWindow(QWidget *parent = nullptr);

    /// Draws the window again, so that its shadow follows what it shows.
    void invalidateShadow();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    std::optional<QPoint> m_pressPosition;
    /// While it is dragged where no window manager does it.
    bool m_followsPointer = false;
};

} // namespace tunedeck

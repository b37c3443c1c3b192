// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QWidget>

#include <optional>

namespace tunedeck {

/// A window of the drawer's own, frameless like the player's and moved by its background, that can be key and main.
class PlaylistWindow : public QWidget {
    Q_OBJECT

public:
    explicit PlaylistWindow(QWidget *parent = nullptr);

    /// Lets the shadow follow what the window shows: it is cast by the frame drawn last.
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

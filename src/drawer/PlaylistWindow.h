// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/WindowDrag.h"

#include <QWidget>

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
    WindowDrag m_drag{*this};
};

} // namespace tunedeck

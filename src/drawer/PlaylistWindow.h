// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

/// A window of the drawer's own, frameless like the player's, that can be key and main.
class PlaylistWindow : public QWidget {
    Q_OBJECT

public:
    explicit PlaylistWindow(QWidget *parent = nullptr);

    /// Lets the shadow follow what the window shows: it is cast by the frame drawn last.
    void invalidateShadow();
};

} // namespace tunedeck

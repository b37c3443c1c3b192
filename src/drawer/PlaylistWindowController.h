// SPDX-License-Identifier: MIT
#pragma once

#include "drawer/PlaylistWindow.h"

#include <QObject>

namespace tunedeck {

/// Owns a window of the drawer's own, which has square corners and never stays on top. The program creates none: its
/// drawer is part of the main window.
class PlaylistWindowController : public QObject {
    Q_OBJECT

public:
    /// The window is not shown yet.
    explicit PlaylistWindowController(QObject *parent = nullptr);

    [[nodiscard]] PlaylistWindow &window() { return m_window; }

private:
    void windowDidLoad();

    PlaylistWindow m_window;
};

} // namespace tunedeck

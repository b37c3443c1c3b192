// SPDX-License-Identifier: MIT
#pragma once

#include "drawer/PlaylistWindow.h"

#include <QObject>

namespace tunedeck {

/// Owns a window of the drawer's own. It has no corners to round, and is never kept above the others.
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

// SPDX-License-Identifier: MIT
#pragma once

#include "above/KeptAbove.h"
#include "platform/windowSystem.h"
#include "player/DrawerHost.h"
#include "widgets/ResizeAnimation.h"
#include "window/FrameAutosave.h"
#include "window/RoomForDrawer.h"
#include "window/Window.h"

#include <memory>

class QAction;

namespace tunedeck {

class PlaylistWindowController;
class UserDefaults;

/// Owns the player's window. Keeps it above all others if the user's settings say so, and gives it one of its two
/// heights: that of the player alone or that of the player with the open drawer. Opening and closing are animated. The
/// window has the width and the place of the last run, and starts with the drawer closed.
class WindowController : public DrawerHost {
    Q_OBJECT
    Q_PROPERTY(bool keepAboveAllWindows READ keepAboveAllWindows WRITE setKeepAboveAllWindows NOTIFY
            keepAboveAllWindowsChanged)

public:
    static constexpr int collapsedHeight = 64; ///< in points
    static constexpr int expandedHeight = 124; ///< in points

    /// `defaults` must outlive the controller. Does not show the window.
    explicit WindowController(UserDefaults &defaults, QObject *parent = nullptr);

    [[nodiscard]] Window &window() { return m_window; }

    [[nodiscard]] bool keepAboveAllWindows() const { return m_keepAboveAllWindows; }
    void setKeepAboveAllWindows(bool keepAbove);
    /// How the window is kept above others. On Wayland a compositor does it, if the program knows a road to it.
    [[nodiscard]] KeptAbove &keptAbove() { return m_keptAbove; }
    /// The controller of a drawer in a window of its own. The drawer is a part of this window, so nothing sets it yet.
    [[nodiscard]] std::weak_ptr<PlaylistWindowController> playlistWindowController() const
    {
        return m_playlistWindowController;
    }

    /// The drawer opens and closes without an animation under reduced motion.
    void setMotionReduced(bool isReduced) { m_heightAnimation.setMotionReduced(isReduced); }
    [[nodiscard]] bool isExpanded() const override { return m_isExpanded; }
    /// The window's top edge keeps its place, except at the lower edge of the screen (see RoomForDrawer).
    void setExpanded(bool expanded) override;

    /// Returns whether this controller enables `item`. Also sets the check mark of the keep-above item.
    bool validateMenuItem(QAction &item) const;

public Q_SLOTS:
    /// Does nothing where nothing can keep the window above. Where only a restart can, emits restartRequested() too.
    void toggleKeepMainWindowAboveAllOtherWindows();

Q_SIGNALS:
    void keepAboveAllWindowsChanged(bool keepAbove);
    /// The user wants the window above others, which takes a restart through XWayland.
    void restartRequested();

private:
    [[nodiscard]] int targetHeight() const;
    void limitHeight(int minimum, int maximum);
    void resizeToTargetHeight();
    void finishResize();

    UserDefaults &m_defaults;
    std::weak_ptr<PlaylistWindowController> m_playlistWindowController;
    bool m_keepAboveAllWindows = false;
    bool m_isExpanded = false;
    KeptAbove m_keptAbove{canKeepAbove()};
    Window m_window;
    RoomForDrawer m_room{m_window, this};
    FrameAutosave m_frameAutosave{m_window, m_room, m_defaults, this};
    ResizeAnimation m_heightAnimation{m_window};
};

} // namespace tunedeck

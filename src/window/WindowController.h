// SPDX-License-Identifier: MIT
#pragma once

#include "player/DrawerHost.h"
#include "widgets/ResizeAnimation.h"
#include "window/Window.h"

class QAction;

namespace tunedeck {

class UserDefaults;

/// Owns the player's window: keeps it above all others as the user's settings say, and gives it one of its two
/// heights, the player alone or the player with the drawer.
class WindowController : public DrawerHost {
    Q_OBJECT
    Q_PROPERTY(bool keepAboveAllWindows READ keepAboveAllWindows WRITE setKeepAboveAllWindows NOTIFY
            keepAboveAllWindowsChanged)

public:
    static constexpr int collapsedHeight = 64;
    static constexpr int expandedHeight = 124;

    /// `defaults` must outlive the controller. The window is not shown yet.
    explicit WindowController(UserDefaults &defaults, QObject *parent = nullptr);

    [[nodiscard]] Window &window();

    [[nodiscard]] bool keepAboveAllWindows() const;
    void setKeepAboveAllWindows(bool keepAbove);

    /// Whether the drawer is to open and close at once.
    void setMotionReduced(bool isReduced);
    [[nodiscard]] bool isExpanded() const override;
    /// The window's top edge stays where it is.
    void setExpanded(bool expanded) override;

    /// Whether this controller enables `item`; also sets the check state of the keep-above item.
    bool validateMenuItem(QAction &item) const;

public Q_SLOTS:
    void toggleKeepMainWindowAboveAllOtherWindows();

Q_SIGNALS:
    void keepAboveAllWindowsChanged(bool keepAbove);

private:
    [[nodiscard]] int targetHeight() const;
    void limitHeight(int minimum, int maximum);
    void resizeToTargetHeight();
    void finishResize();

    UserDefaults &m_defaults;
    bool m_keepAboveAllWindows = false;
    bool m_isExpanded = false;
    Window m_window;
    ResizeAnimation m_heightAnimation{m_window};
};

} // namespace tunedeck

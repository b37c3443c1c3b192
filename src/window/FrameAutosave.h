// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QObject>
#include <QTimer>

namespace tunedeck {

class RoomForDrawer;
class UserDefaults;
class Window;

/// Keeps the window's width and place in the settings, and gives them back to the window of the next run, however this
/// run ends. A window that was pushed up for the drawer has the place from which it was pushed. Where no window knows
/// its place, as on Wayland, the width alone is kept, and the place of an earlier run stays in the settings.
class FrameAutosave : public QObject {
    Q_OBJECT

public:
    /// The setting with the content's width (integer), in points.
    static constexpr QLatin1String widthKey{"PlayerWindowWidth"};
    /// The setting with the content's place (text, see WindowPlace).
    static constexpr QLatin1String placeKey{"PlayerWindowPlace"};

    /// All must outlive this object. The window, which is not shown yet, gets its width and place.
    FrameAutosave(Window &window, const RoomForDrawer &room, UserDefaults &defaults, QObject *parent = nullptr);

protected:
    /// Watches the window.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void restore();
    void save();
    void saveIfPending();

    Window &m_window;
    const RoomForDrawer &m_room;
    UserDefaults &m_defaults;
    QTimer m_saveTimer{this};
};

} // namespace tunedeck

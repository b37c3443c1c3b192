// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QTimer>

#include <optional>

namespace tunedeck {

class Window;

/// Changes the window's height for the drawer. The top edge keeps its place. At the lower edge of the screen, however,
/// the growing window moves up, pushed by the window manager or, under KWin, by itself: then it goes back while the
/// drawer closes, unless the user has moved it in the meantime.
class RoomForDrawer : public QObject {
    Q_OBJECT

public:
    /// `window` must outlive this object.
    explicit RoomForDrawer(Window &window, QObject *parent = nullptr);

    void beginOpening();
    void beginClosing();
    /// Gives the window's content this height, in points.
    void setHeight(int height);
    void finishOpening(int height);
    void finishClosing();
    /// The content's top left corner on the screen with the drawer closed: where the window is now, unless it was
    /// pushed up for the drawer.
    [[nodiscard]] QPoint placeWithoutDrawer() const;

private:
    void grow(QRect place, int height);
    [[nodiscard]] std::optional<int> lowerEdge() const;
    [[nodiscard]] bool wasPushedTo(const QRect &place) const;

    Window &m_window;
    QRect m_before; ///< the content's place on the screen before the drawer opened
    QRect m_open; ///< its place when the drawer began to close
    std::optional<QPoint> m_placeWhenOpen; ///< its top left corner, once the window manager has made room
    std::optional<int> m_lowerEdge; ///< the screen's, while the drawer opens
    bool m_isOpen = false; ///< also while it opens or closes
    bool m_goesBack = false;
    QTimer m_settling{this};
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QPoint>

class QWidget;

namespace tunedeck {

class Window;

/// Keeps the program's other windows (preferences, about, help, updates, messages) with the player: the window manager
/// stacks them above it, at its level, and each opens where it does not cover the player, if the screen has room.
class CompanionWindows : public QObject {
    Q_OBJECT

public:
    /// `player` must outlive this object.
    explicit CompanionWindows(Window &player, QObject *parent = nullptr);

protected:
    /// Watches all objects of the application, since the module for updates opens a window of its own.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void join(QWidget &window);
    void place(QWidget &window);
    void applyFlags(QWidget &window) const;
    void applyFlagsToAll() const;

    Window &m_player;
    /// Windows that are about to be shown, and the places for their frames.
    QHash<const QObject *, QPoint> m_places;
};

} // namespace tunedeck

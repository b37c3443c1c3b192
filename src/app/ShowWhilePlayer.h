// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

namespace tunedeck {

class MusicApplication;
class UserDefaults;

/// Has the window shown only while there is a player, if the user wants that.
class ShowWhilePlayer : public QObject {
    Q_OBJECT

public:
    /// Both references must outlive this object.
    ShowWhilePlayer(const MusicApplication &music, UserDefaults &defaults, QObject *parent = nullptr);

    /// Whether the window may be on the screen now.
    [[nodiscard]] bool isShown() const;

Q_SIGNALS:
    /// The window must come up by itself, so it must not take the keyboard focus.
    void showRequested();
    void hideRequested();

private:
    void handleSetting(bool isWanted);
    void handlePlayer();

    const MusicApplication &m_music;
    bool m_isWanted = false;
    QTimer m_farewell{this};
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

namespace tunedeck {

class FollowablePlayers;
class UserDefaults;

/// The pop-up from which the user chooses the player to follow. It follows the players, also while its list is open.
class FollowedPlayerPicker : public QComboBox {
    Q_OBJECT

public:
    /// Both references must outlive the picker.
    FollowedPlayerPicker(UserDefaults &defaults, FollowablePlayers &players, QWidget *parent = nullptr);

private:
    void refresh();
    void follow(int row);

    UserDefaults &m_defaults;
    FollowablePlayers &m_players;
};

} // namespace tunedeck

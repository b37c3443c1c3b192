// SPDX-License-Identifier: MIT
#pragma once

#include "music/FollowablePlayers.h"

#include <QList>
#include <QTimer>

namespace tunedeck {

class FollowedPlayer;
class MprisPlayer;
class UserDefaults;

/// The players on the session bus, as menus list them.
class MprisFollowablePlayers : public FollowablePlayers {
    Q_OBJECT

public:
    /// `followed` and `defaults` must outlive this object.
    MprisFollowablePlayers(FollowedPlayer &followed, UserDefaults &defaults, QObject *parent = nullptr);

    [[nodiscard]] QList<FollowablePlayer> followablePlayers() const override;
    [[nodiscard]] QList<NeverFollowedPlayer> neverFollowedPlayers() const override;
    [[nodiscard]] QString awaitedPlayer() const override;
    void neverFollow(const QString &id) override;
    void allowToFollow(const QString &id) override;

private:
    [[nodiscard]] QList<MprisPlayer *> runningPlayers() const;
    [[nodiscard]] bool isPinned(const MprisPlayer &player) const;
    void noteChange();
    void announce();

    FollowedPlayer &m_followed;
    UserDefaults &m_defaults;
    QTimer m_pause{this};
    bool m_hasChanged = false;
};

} // namespace tunedeck

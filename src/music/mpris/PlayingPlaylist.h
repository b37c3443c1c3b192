// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlaylistDetails.h"

#include <mutex>
#include <optional>

namespace tunedeck {

/// Which of its playlists a player plays, as far as its ActivePlaylist can be believed. Any thread may call any member.
///
/// In Strawberry and Clementine ActivePlaylist is the playlist on view, which need not be the one that plays. A player
/// that has an active playlist while it is stopped, or another than was just activated, is taken for one like them, for
/// good. Such a player plays what was activated here last, until it stops.
class PlayingPlaylist {
public:
    /// `family` is the player's (see playerFamily()).
    explicit PlayingPlaylist(const QString &family);

    /// Whether the player is stopped; at first it is.
    void setStopped(bool isStopped);
    /// Whether ActivePlaylist is known to be the playlist that plays, or to be the one on view.
    [[nodiscard]] bool isKnown() const;
    /// Whether `active`, the player's ActivePlaylist, shows that it is the playlist on view if the player is really
    /// stopped now.
    [[nodiscard]] bool isSuspect(const std::optional<PlaylistDetails> &active) const;
    void noteActiveIsOnView();
    void noteActiveFollows();
    /// The player has answered that it plays `playlist`.
    void noteActivated(const PlaylistDetails &playlist);

    /// The playlist that plays while the player's ActivePlaylist is `active`. None while the player is stopped.
    [[nodiscard]] std::optional<PlaylistDetails> judge(const std::optional<PlaylistDetails> &active) const;

private:
    enum class Active { Unknown, Plays, IsOnView };

    mutable std::mutex m_mutex;
    Active m_active;
    bool m_isStopped = true;
    std::optional<PlaylistDetails> m_activated;
};

} // namespace tunedeck

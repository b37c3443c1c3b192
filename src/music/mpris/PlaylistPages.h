// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlaylistDetails.h"
#include "music/mpris/bus/BusValue.h"

#include <QList>
#include <QSet>

#include <optional>

namespace tunedeck {

/// The playlists of a player, gathered page by page: each once, in the player's order, at most maximumPlaylists,
/// whatever the player sends. A page may be shorter than requested.
class PlaylistPages {
public:
    /// Playlists to request at once.
    static constexpr int pageSize = bus::maximumElements;
    static constexpr qsizetype maximumPlaylists = 100'000;

    /// `count` is the number of playlists that the player reports, if it does.
    explicit PlaylistPages(std::optional<double> count = std::nullopt);

    /// Adds the player's answer to a request for the playlists from nextIndex() on, made plain.
    void add(const QVariant &page);
    [[nodiscard]] uint nextIndex() const { return m_nextIndex; }
    /// Whether no further request is needed.
    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    /// Whether the player has sent as many playlists as it counts; any at all if it does not count them.
    [[nodiscard]] bool reachesCount() const;
    [[nodiscard]] const QList<PlaylistDetails> &playlists() const { return m_playlists; }

private:
    const std::optional<double> m_count;
    QList<PlaylistDetails> m_playlists;
    QSet<qint64> m_ids;
    uint m_nextIndex = 0;
    bool m_isComplete = false;
};

} // namespace tunedeck

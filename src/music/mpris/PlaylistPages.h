// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlaylistDetails.h"
#include "music/mpris/bus/BusValue.h"

#include <QList>
#include <QSet>

#include <optional>

namespace tunedeck {

/// The playlists of one player, gathered page by page, in the player's order and each once. Bounded, whatever the
/// player sends; a page may be shorter than what was asked for.
class PlaylistPages {
public:
    /// How many playlists to ask for at once.
    static constexpr int pageSize = bus::maximumElements;
    static constexpr qsizetype maximumPlaylists = 100'000;

    /// `count` is how many playlists the player says it has, where it says so.
    explicit PlaylistPages(std::optional<double> count = std::nullopt);

    /// Takes what the player answered when it was asked for the playlists from nextIndex() on.
    void add(const QVariant &page);
    [[nodiscard]] uint nextIndex() const;
    /// Whether there is nothing more to ask for.
    [[nodiscard]] bool isComplete() const;
    /// Whether the player has told of as many as it counts; of any at all where it does not count them.
    [[nodiscard]] bool reachesCount() const;
    [[nodiscard]] const QList<PlaylistDetails> &playlists() const;

private:
    const std::optional<double> m_count;
    QList<PlaylistDetails> m_playlists;
    QSet<qint64> m_ids;
    uint m_nextIndex = 0;
    bool m_isComplete = false;
};

} // namespace tunedeck

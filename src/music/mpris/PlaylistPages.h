// SPDX-License-Identifier: MIT
#pragma once

#include "BusValue.h"
#include "PlaylistDetails.h"

#include <QList>
#include <QSet>

namespace tunedeck {

/// The playlists of one player, gathered page by page, in the player's order and each once. Bounded, whatever the
/// player sends.
class PlaylistPages {
public:
    /// How many playlists to ask for at once.
    static constexpr int pageSize = bus::maximumElements;
    static constexpr qsizetype maximumPlaylists = 100'000;

    /// Takes what the player answered when it was asked for the playlists from nextIndex() on.
    void add(const QVariant &page);
    [[nodiscard]] uint nextIndex() const;
    /// Whether there is nothing more to ask for.
    [[nodiscard]] bool isComplete() const;
    [[nodiscard]] const QList<PlaylistDetails> &playlists() const;

private:
    QList<PlaylistDetails> m_playlists;
    QSet<qint64> m_ids;
    uint m_nextIndex = 0;
    bool m_isComplete = false;
};

} // namespace tunedeck

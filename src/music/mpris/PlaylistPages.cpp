// SPDX-License-Identifier: MIT
#include "PlaylistPages.h"

namespace tunedeck {

void PlaylistPages::add(const QVariant &page)
{
    const QVariantList elements = bus::plainValue(page).toList();
    const qsizetype before = m_playlists.size();
    for (const QVariant &element : elements) {
        const std::optional<PlaylistDetails> playlist = decodePlaylist(element);
        if (m_playlists.size() == maximumPlaylists || !playlist || m_ids.contains(playlist->id)) {
            continue;
        }
        m_ids.insert(playlist->id);
        m_playlists.append(*playlist);
    }
    m_nextIndex += pageSize;
    // A player that cannot count sends the same page again and again.
    const bool broughtNothing = m_playlists.size() == before;
    m_isComplete = broughtNothing || elements.size() < pageSize || m_playlists.size() == maximumPlaylists;
}

uint PlaylistPages::nextIndex() const
{
    return m_nextIndex;
}

bool PlaylistPages::isComplete() const
{
    return m_isComplete;
}

const QList<PlaylistDetails> &PlaylistPages::playlists() const
{
    return m_playlists;
}

} // namespace tunedeck

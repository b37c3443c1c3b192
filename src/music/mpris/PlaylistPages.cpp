// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistPages.h"

#include <QVariantList>

namespace tunedeck {

PlaylistPages::PlaylistPages(std::optional<double> count)
    : m_count(count)
{
}

void PlaylistPages::add(const QVariant &page)
{
    const QVariantList elements = page.toList();
    const qsizetype before = m_playlists.size();
    for (const QVariant &element : elements) {
        const std::optional<PlaylistDetails> playlist = decodePlaylist(element);
        if (m_playlists.size() == maximumPlaylists || !playlist || m_ids.contains(playlist->id)) {
            continue;
        }
        m_ids.insert(playlist->id);
        m_playlists.append(*playlist);
    }
    m_nextIndex += uint(elements.size());
    // A faulty player may send the same page again and again.
    const bool broughtNothing = m_playlists.size() == before;
    // An outdated count must not cut a list whose pages are still full.
    const bool isLastByCount = elements.size() < pageSize && m_count && reachesCount();
    m_isComplete = broughtNothing || isLastByCount || m_playlists.size() == maximumPlaylists;
}

bool PlaylistPages::reachesCount() const
{
    return m_count ? m_nextIndex >= *m_count : m_nextIndex > 0;
}

} // namespace tunedeck

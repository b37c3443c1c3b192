// SPDX-License-Identifier: MIT
#include "music/mpris/PlayingPlaylist.h"

#include <QStringList>

namespace tunedeck {

PlayingPlaylist::PlayingPlaylist(const QString &family)
{
    const QStringList onView{QStringLiteral("strawberry"), QStringLiteral("clementine")};
    m_active = onView.contains(family) ? Active::IsOnView : Active::Unknown;
}

void PlayingPlaylist::setStopped(bool isStopped)
{
    const std::lock_guard lock(m_mutex);
    if (isStopped && !m_isStopped) {
        m_activated.reset();
    }
    m_isStopped = isStopped;
}

bool PlayingPlaylist::isKnown() const
{
    const std::lock_guard lock(m_mutex);
    return m_active != Active::Unknown;
}

bool PlayingPlaylist::isSuspect(const std::optional<PlaylistDetails> &active) const
{
    const std::lock_guard lock(m_mutex);
    return active && m_isStopped && m_active != Active::IsOnView;
}

void PlayingPlaylist::noteActiveIsOnView()
{
    const std::lock_guard lock(m_mutex);
    m_active = Active::IsOnView;
}

void PlayingPlaylist::noteActiveFollows()
{
    const std::lock_guard lock(m_mutex);
    m_active = Active::Plays;
}

void PlayingPlaylist::noteActivated(const PlaylistDetails &playlist)
{
    const std::lock_guard lock(m_mutex);
    m_activated = playlist;
}

std::optional<PlaylistDetails> PlayingPlaylist::judge(const std::optional<PlaylistDetails> &active) const
{
    const std::lock_guard lock(m_mutex);
    if (m_isStopped) {
        return std::nullopt;
    }
    return m_active == Active::IsOnView ? m_activated : active;
}

} // namespace tunedeck

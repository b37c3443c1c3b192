// SPDX-License-Identifier: MIT
#include "Player.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using std::chrono::microseconds;

namespace {

constexpr microseconds liveTitleTime = 6s;
constexpr microseconds growthTime = 1s;

} // namespace

Player::Player(Clock clock, quint32 seed)
    : m_clock(std::move(clock))
    , m_random(seed)
{
    setQueue(m_playlists.constFirst().tracks);
}

microseconds Player::position() const
{
    if (m_status != PlaybackStatus::Playing) {
        return m_position;
    }
    const auto played = static_cast<double>((m_clock() - m_since).count()) * m_rate;
    const microseconds position = m_position + microseconds(static_cast<qint64>(played));
    return m_track.length && !m_track.isLive() ? std::min(position, *m_track.length) : position;
}

std::optional<Track> Player::currentTrack() const
{
    return m_order.isEmpty() ? std::nullopt : std::optional(m_track);
}

qsizetype Player::currentTrackNumber() const
{
    return m_order.value(m_place);
}

bool Player::canGoNext() const
{
    return !m_order.isEmpty() && (!isLast() || m_loopStatus != LoopStatus::None);
}

bool Player::canGoPrevious() const
{
    return !m_order.isEmpty() && (m_place > 0 || m_loopStatus != LoopStatus::None);
}

bool Player::canSeek() const
{
    return !m_order.isEmpty() && !m_track.isLive();
}

void Player::play()
{
    if (!m_order.isEmpty()) {
        setStatus(PlaybackStatus::Playing);
    }
}

void Player::pause()
{
    if (m_status == PlaybackStatus::Playing) {
        setStatus(PlaybackStatus::Paused);
    }
}

void Player::playPause()
{
    m_status == PlaybackStatus::Playing ? pause() : play();
}

void Player::stop()
{
    m_status = PlaybackStatus::Stopped;
    moveTo(0us);
    Q_EMIT changed();
}

void Player::next()
{
    if (!canGoNext()) {
        stop();
        return;
    }
    enter((m_place + 1) % m_order.size());
    announceTrack();
}

void Player::previous()
{
    if (!canGoPrevious()) {
        stop();
        return;
    }
    enter((m_place + m_order.size() - 1) % m_order.size());
    announceTrack();
}

void Player::seekBy(microseconds offset)
{
    if (!canSeek() || m_status == PlaybackStatus::Stopped) {
        return;
    }
    // The offset is compared with the time that is left: it may be any number, and the sum would overflow.
    if (m_track.length && offset > *m_track.length - position()) {
        next();
        return;
    }
    setPosition(offset < -position() ? 0us : position() + offset);
}

void Player::setPosition(microseconds position)
{
    const bool isInside = position >= 0us && (!m_track.length || position <= *m_track.length);
    if (!canSeek() || m_status == PlaybackStatus::Stopped || !isInside) {
        return;
    }
    moveTo(position);
    Q_EMIT seeked(position);
}

void Player::open(const QString &url)
{
    const qsizetype number = m_library.size();
    m_library.append(
        {.url = url, .title = {}, .artists = {}, .album = {}, .genres = {}, .length = 3min, .liveTitles = {}});
    m_queue.append(number);
    m_order.append(number);
    enter(m_order.size() - 1);
    m_status = PlaybackStatus::Playing;
    announceTrack();
}

void Player::goToTrack(qsizetype number)
{
    if (number < 0 || number >= m_library.size()) {
        return;
    }
    if (!m_order.contains(number)) {
        m_queue.append(number);
        m_order.append(number);
    }
    enter(m_order.indexOf(number));
    announceTrack();
}

void Player::restart()
{
    if (m_order.isEmpty()) {
        return;
    }
    enter(m_place);
    announceTrack();
}

void Player::setLoopStatus(LoopStatus status)
{
    m_loopStatus = status;
    Q_EMIT changed();
}

void Player::setShuffled(bool isShuffled)
{
    if (m_isShuffled == isShuffled) {
        return;
    }
    m_isShuffled = isShuffled;
    if (!m_order.isEmpty()) {
        const qsizetype current = currentTrackNumber();
        m_order = m_queue;
        m_place = m_order.indexOf(current);
        if (isShuffled) {
            m_order.move(m_place, 0);
            m_place = 0;
            shuffleFrom(1);
        }
    }
    Q_EMIT changed();
}

void Player::setRate(double rate)
{
    if (std::isnan(rate)) {
        return;
    }
    if (rate == 0) {
        pause();
        return;
    }
    moveTo(position());
    m_rate = std::clamp(rate, minimumRate, maximumRate);
    Q_EMIT changed();
}

void Player::setVolume(double volume)
{
    if (std::isnan(volume)) {
        return;
    }
    m_volume = volume;
    Q_EMIT changed();
}

void Player::setTitle(const QString &title)
{
    m_track.title = title;
    Q_EMIT changed();
}

void Player::setLength(microseconds length)
{
    m_track.length = length;
    Q_EMIT changed();
}

void Player::setGrowing(bool isGrowing)
{
    m_isGrowing = isGrowing;
    m_growthDue = m_clock() + growthTime;
    Q_EMIT changed();
}

void Player::setPlaylistCount(qsizetype count)
{
    m_playlists = demo::playlists(count);
    if (m_activePlaylist && *m_activePlaylist >= count) {
        m_activePlaylist.reset();
    }
    Q_EMIT changed();
}

void Player::renamePlaylist(qsizetype number, const QString &name)
{
    if (number < 0 || number >= m_playlists.size()) {
        return;
    }
    m_playlists[number].name = name;
    Q_EMIT playlistRenamed(number);
    Q_EMIT changed();
}

void Player::activatePlaylist(qsizetype number)
{
    if (number < 0 || number >= m_playlists.size()) {
        return;
    }
    m_activePlaylist = number;
    setQueue(m_playlists.at(number).tracks);
    m_status = m_order.isEmpty() ? PlaybackStatus::Stopped : PlaybackStatus::Playing;
    announceTrack();
}

std::optional<microseconds> Player::timeToNextEvent() const
{
    if (m_status != PlaybackStatus::Playing) {
        return std::nullopt;
    }
    std::optional<microseconds> time;
    const auto happensIn = [&time](microseconds duration) {
        time = std::max(0us, std::min(duration, time.value_or(duration)));
    };
    if (m_track.isLive()) {
        happensIn(m_titleDue - m_clock());
    } else if (m_track.length) {
        const auto left = static_cast<double>((*m_track.length - position()).count()) / m_rate;
        happensIn(microseconds(static_cast<qint64>(left)) + 1us);
    }
    if (m_isGrowing) {
        happensIn(m_growthDue - m_clock());
    }
    return time;
}

void Player::advance()
{
    if (m_status != PlaybackStatus::Playing) {
        return;
    }
    const microseconds now = m_clock();
    // Growth comes first: a length that grows as fast as the position runs never ends the track.
    if (m_isGrowing && now >= m_growthDue) {
        m_growthDue = now + growthTime;
        setLength(m_track.length.value_or(position()) + growthTime);
    }
    if (m_track.isLive() && now >= m_titleDue) {
        m_titleDue = now + liveTitleTime;
        m_liveTitle = (m_liveTitle + 1) % m_track.liveTitles.size();
        setTitle(m_track.liveTitles.at(m_liveTitle));
    }
    if (!m_track.isLive() && m_track.length && position() >= *m_track.length) {
        trackEnded();
    }
}

void Player::setQueue(const QList<qsizetype> &tracks)
{
    m_queue = tracks;
    m_order = tracks;
    if (m_isShuffled) {
        shuffleFrom(0);
    }
    enter(0);
}

void Player::shuffleFrom(qsizetype first)
{
    // Not std::shuffle: its result differs from one standard library to the next.
    for (qsizetype last = m_order.size() - 1; last > first; --last) {
        const qsizetype other = first + static_cast<qsizetype>(m_random() % (last - first + 1));
        m_order.swapItemsAt(last, other);
    }
}

void Player::enter(qsizetype place)
{
    m_place = place;
    m_track = m_order.isEmpty() ? Track() : m_library.at(currentTrackNumber());
    m_liveTitle = 0;
    moveTo(0us);
    restartClocks();
}

void Player::announceTrack()
{
    // A stopped player shows no track, so none has started.
    if (m_status == PlaybackStatus::Stopped) {
        Q_EMIT changed();
    } else {
        Q_EMIT trackStarted();
    }
}

void Player::moveTo(microseconds position)
{
    m_position = position;
    m_since = m_clock();
}

void Player::restartClocks()
{
    m_titleDue = m_clock() + liveTitleTime;
    m_growthDue = m_clock() + growthTime;
}

void Player::setStatus(PlaybackStatus status)
{
    if (m_status == status) {
        return;
    }
    moveTo(position());
    restartClocks();
    m_status = status;
    Q_EMIT changed();
}

void Player::trackEnded()
{
    if (m_loopStatus == LoopStatus::Track) {
        restart();
        return;
    }
    if (canGoNext()) {
        next();
        return;
    }
    enter(0);
    stop();
}

} // namespace tunedeck::demo

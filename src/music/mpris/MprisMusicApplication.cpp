// SPDX-License-Identifier: MIT
#include "music/mpris/MprisMusicApplication.h"

#include "music/mpris/PlayerChoice.h"
#include "music/mpris/PlayerPlaylists.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

/// Back leads to the start of the track from here on, before that to the track before.
constexpr double startOfTrack = 3.0; // seconds

std::optional<QString> nonEmpty(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

std::optional<LoopStatus> loopStatus(FourCharCode repeat)
{
    switch (repeat) {
    case SongRepeat::off:
        return LoopStatus::None;
    case SongRepeat::one:
        return LoopStatus::Track;
    case SongRepeat::all:
        return LoopStatus::Playlist;
    default:
        return std::nullopt;
    }
}

FourCharCode songRepeatCode(LoopStatus status)
{
    switch (status) {
    case LoopStatus::None:
        return SongRepeat::off;
    case LoopStatus::Track:
        return SongRepeat::one;
    case LoopStatus::Playlist:
        return SongRepeat::all;
    }
    return SongRepeat::off;
}

} // namespace

MprisMusicApplication::MprisMusicApplication(
    const QDBusConnection &bus, UserDefaults &defaults, ApplicationLauncher &launcher, Clock clock, QObject *parent)
    : MusicApplication(parent)
    , m_bus(bus)
    , m_defaults(defaults)
    , m_launcher(launcher)
    , m_clock(std::move(clock))
    , m_registry(std::make_unique<PlayerRegistry>(bus, m_clock, this))
{
    m_seekTimer.setObjectName(QStringLiteral("seekTimer"));
    m_seekTimer.setInterval(SeekRamp::interval);
    connect(&m_seekTimer, &QTimer::timeout, this, &MprisMusicApplication::seekOn);
    followRegistry();
    connect(&m_defaults, &UserDefaults::valueChanged, this, [this](const QString &key) {
        if (key == SettingsKey::followedPlayer) {
            reconsiderPlayer();
            rememberPlayer();
        }
    });
}

MprisMusicApplication::~MprisMusicApplication() = default;

void MprisMusicApplication::setBus(const QDBusConnection &bus)
{
    follow(nullptr);
    m_lastPlayed.clear();
    m_bus = bus;
    m_registry = std::make_unique<PlayerRegistry>(bus, m_clock, this);
    followRegistry();
    Q_EMIT followablePlayersChanged();
}

void MprisMusicApplication::followRegistry()
{
    connect(m_registry.get(), &PlayerRegistry::playerAttached, this, &MprisMusicApplication::playerAttached);
    connect(m_registry.get(), &PlayerRegistry::playerChanged, this, &MprisMusicApplication::playerChanged);
    connect(m_registry.get(), &PlayerRegistry::playerRemoved, this, &MprisMusicApplication::playerRemoved);
    connect(m_registry.get(), &PlayerRegistry::playerRespondingChanged, this, [this](MprisPlayer *player) {
        if (player == m_player) {
            endSeek();
            Q_EMIT respondingDidChange(player->isResponding());
        }
    });
    connect(m_registry.get(), &PlayerRegistry::ready, this, &MprisMusicApplication::becomeReady);
}

bool MprisMusicApplication::isReady() const
{
    return m_registry->isReady();
}

QList<FollowablePlayer> MprisMusicApplication::followablePlayers() const
{
    QList<FollowablePlayer> players;
    for (const PlayerCandidate &candidate : tunedeck::followablePlayers(candidates())) {
        const QString family = playerFamily(candidate.name);
        if (std::ranges::find(players, family, &FollowablePlayer::family) == players.end()) {
            players.append({family, playerOf(candidate.owner)->identity()});
        }
    }
    return players;
}

void MprisMusicApplication::refreshPlayer()
{
    if (m_player) {
        m_player->refresh();
    }
}

void MprisMusicApplication::setWatched(bool isWatched)
{
    m_isWatched = isWatched;
    if (!m_player) {
        return;
    }
    m_player->setSampled(isWatched);
    if (isWatched) {
        m_player->refresh();
    }
}

bool MprisMusicApplication::isRunning() const
{
    return m_player != nullptr;
}

bool MprisMusicApplication::isResponding() const
{
    return !m_player || m_player->isResponding();
}

bool MprisMusicApplication::activate()
{
    if (isRunning()) {
        return false;
    }
    QStringList entries{pinnedPlayersEntry(), m_defaults.stringForKey(SettingsKey::followedPlayer),
        m_defaults.stringForKey(SettingsKey::lastFollowedPlayer)};
    entries.removeAll(QString());
    m_launcher.launch(entries, QStringLiteral("audio/mpeg"));
    return true;
}

std::optional<FourCharCode> MprisMusicApplication::playerState() const
{
    if (!m_player) {
        return std::nullopt;
    }
    if (m_seek) {
        return m_seek->direction() == SeekRamp::Direction::Forward ? PlayerState::fastForwarding
                                                                   : PlayerState::rewinding;
    }
    switch (m_player->mirror().status()) {
    case PlaybackStatus::Stopped:
        return PlayerState::stopped;
    case PlaybackStatus::Paused:
        return PlayerState::paused;
    case PlaybackStatus::Playing:
        return PlayerState::playing;
    }
    return PlayerState::stopped;
}

std::optional<MusicTrack> MprisMusicApplication::currentTrack() const
{
    if (!m_player || m_player->mirror().status() == PlaybackStatus::Stopped) {
        return std::nullopt;
    }
    const TrackDetails &track = m_player->mirror().track();
    return MusicTrack{.name = nonEmpty(track.name()),
        .artist = nonEmpty(track.artist()),
        .album = nonEmpty(track.album),
        .genre = nonEmpty(track.genre),
        .duration = track.isLiveStream() ? std::nullopt : track.length};
}

std::optional<double> MprisMusicApplication::playerPosition() const
{
    return m_player ? m_player->mirror().position(m_clock()) : std::nullopt;
}

bool MprisMusicApplication::setPlayerPosition(double seconds)
{
    return m_player && m_player->setPosition(seconds);
}

std::optional<int> MprisMusicApplication::soundVolume() const
{
    const std::optional<double> volume = m_player ? m_player->mirror().volume() : std::nullopt;
    return volume ? std::optional(int(std::lround(*volume * 100))) : std::nullopt;
}

bool MprisMusicApplication::setSoundVolume(qint64 volume)
{
    if (!m_player) {
        return false;
    }
    // A little above the step, because several players cut off what is below theirs; but silence is silence.
    const double step = double(std::clamp<qint64>(volume, 0, 100));
    return m_player->setVolume(step > 0 ? std::min(1.0, (step + 0.4) / 100) : 0);
}

std::optional<bool> MprisMusicApplication::shuffleEnabled() const
{
    return m_player ? m_player->mirror().shuffle() : std::nullopt;
}

bool MprisMusicApplication::setShuffleEnabled(bool enabled)
{
    return shuffleEnabled() && m_player->setShuffle(enabled);
}

std::optional<FourCharCode> MprisMusicApplication::songRepeat() const
{
    const std::optional<LoopStatus> status = m_player ? m_player->mirror().loopStatus() : std::nullopt;
    return status ? std::optional(songRepeatCode(*status)) : std::nullopt;
}

bool MprisMusicApplication::setSongRepeat(FourCharCode repeat)
{
    const std::optional<LoopStatus> status = loopStatus(repeat);
    return status && songRepeat() && m_player->setLoopStatus(*status);
}

bool MprisMusicApplication::playpause()
{
    if (!m_player || !m_player->askForPlayPause()) {
        return false;
    }
    ++m_playPauses;
    finishTurnLater();
    return true;
}

bool MprisMusicApplication::nextTrack()
{
    return m_player && m_player->next();
}

bool MprisMusicApplication::backTrack()
{
    if (!m_player) {
        return false;
    }
    if (playerPosition().value_or(0) > startOfTrack && m_player->setPosition(0)) {
        return true;
    }
    return m_player->previous() || m_player->setPosition(0);
}

bool MprisMusicApplication::fastForward()
{
    return startSeek(SeekRamp::Direction::Forward);
}

bool MprisMusicApplication::rewind()
{
    return startSeek(SeekRamp::Direction::Backward);
}

bool MprisMusicApplication::resume()
{
    if (!m_player) {
        return false;
    }
    endSeek();
    return true;
}

std::optional<MusicPlaylist> MprisMusicApplication::currentPlaylist() const
{
    const std::shared_ptr<PlayerPlaylists> followed = playlists();
    const std::optional<PlaylistDetails> active = followed ? followed->readActive() : std::nullopt;
    return active ? std::optional(MusicPlaylist{.id = active->id, .name = active->name}) : std::nullopt;
}

std::optional<QVariantList> MprisMusicApplication::playlistIds() const
{
    const std::shared_ptr<PlayerPlaylists> followed = playlists();
    return followed ? followed->readIds() : std::nullopt;
}

std::optional<QVariantList> MprisMusicApplication::playlistNames() const
{
    const std::shared_ptr<PlayerPlaylists> followed = playlists();
    return followed ? followed->names() : std::nullopt;
}

PlaylistSource MprisMusicApplication::playlistSource() const
{
    const std::shared_ptr<PlayerPlaylists> followed = playlists();
    return followed ? followed->source() : PlaylistSource::unknown;
}

bool MprisMusicApplication::playPlaylist(qint64 id)
{
    if (const std::shared_ptr<PlayerPlaylists> followed = playlists()) {
        return followed->play(id);
    }
    QMetaObject::invokeMethod(this, &MprisMusicApplication::activate, Qt::QueuedConnection);
    return false;
}

std::optional<QList<MusicAirPlayDevice>> MprisMusicApplication::currentAirPlayDevices() const
{
    return std::nullopt;
}

void MprisMusicApplication::endBackground()
{
    if (const std::shared_ptr<PlayerPlaylists> followed = playlists()) {
        followed->stopWaiting();
    }
}

// Players

void MprisMusicApplication::playerAttached(MprisPlayer *player)
{
    if (player->mirror().status() == PlaybackStatus::Playing) {
        m_lastPlayed[player->owner()] = ++m_plays;
    }
    connect(player, &MprisPlayer::identityChanged, this, &MprisMusicApplication::rememberPlayer);
    connect(player, &MprisPlayer::identityChanged, this, &MprisMusicApplication::followablePlayersChanged);
    reconsiderPlayer();
    Q_EMIT followablePlayersChanged();
}

void MprisMusicApplication::playerChanged(MprisPlayer *player, PlayerMirror::Changes changes)
{
    if (changes.status && player->mirror().status() == PlaybackStatus::Playing) {
        m_lastPlayed[player->owner()] = ++m_plays;
    }
    if (player == m_player) {
        m_postsPlayerInfo |= changes.userInfo;
        m_postsSettings |= changes.settings;
        finishTurnLater();
    }
    if (changes.status || changes.userInfo) {
        reconsiderPlayer();
    }
}

void MprisMusicApplication::playerRemoved(MprisPlayer *player)
{
    m_lastPlayed.remove(player->owner());
    if (player == m_player) {
        // The next player to follow is looked for first, so that both changes happen in one turn.
        follow(nullptr);
    }
    reconsiderPlayer();
    Q_EMIT followablePlayersChanged();
}

void MprisMusicApplication::becomeReady()
{
    // Whoever waited for this moment to look on has not heard of the player yet.
    m_postsPlayerInfo |= isRunning();
    finishTurnLater();
    Q_EMIT ready();
}

QList<PlayerCandidate> MprisMusicApplication::candidates() const
{
    QList<PlayerCandidate> candidates;
    for (const MprisPlayer *player : m_registry->players()) {
        if (!player->isAttached()) {
            continue;
        }
        candidates.append({.owner = player->owner(),
            .name = player->name(),
            .processId = player->processId(),
            .isPlaying = player->mirror().status() == PlaybackStatus::Playing,
            .lastPlayed = m_lastPlayed.value(player->owner()),
            .browserProcessId = player->mirror().track().browserProcessId});
    }
    return candidates;
}

void MprisMusicApplication::reconsiderPlayer()
{
    const std::optional<QString> owner = choosePlayer(
        candidates(), m_defaults.stringForKey(SettingsKey::followedPlayer), m_player ? m_player->owner() : QString());
    follow(playerOf(owner));
}

void MprisMusicApplication::follow(MprisPlayer *player)
{
    if (player == m_player) {
        return;
    }
    const bool wasResponding = isResponding();
    changePlayer(player);
    if (isResponding() != wasResponding) {
        Q_EMIT respondingDidChange(isResponding());
    }
}

void MprisMusicApplication::changePlayer(MprisPlayer *player)
{
    endSeek();
    m_playPauses = 0;
    if (MprisPlayer *former = std::exchange(m_player, nullptr)) {
        former->setSampled(false);
        setPlaylists(nullptr);
        Q_EMIT didTerminate();
    }
    if (!player) {
        return;
    }
    m_player = player;
    m_player->setSampled(m_isWatched);
    setPlaylists(std::make_shared<PlayerPlaylists>(m_bus, m_player->owner()));
    rememberPlayer();
    Q_EMIT didLaunch();
    m_postsPlayerInfo = true;
    finishTurnLater();
}

void MprisMusicApplication::rememberPlayer()
{
    if (!m_player) {
        return;
    }
    const QString entry = m_player->desktopEntry();
    const QString family = playerFamily(m_player->name());
    remember(SettingsKey::lastFollowedPlayer, entry.isEmpty() ? family : entry);
    if (family == m_defaults.stringForKey(SettingsKey::followedPlayer) && !entry.isEmpty()) {
        remember(SettingsKey::followedPlayerEntry, family + u'/' + entry);
    }
}

void MprisMusicApplication::remember(const QString &key, const QString &text)
{
    if (m_defaults.stringForKey(key) != text) {
        m_defaults.setValue(key, text);
    }
}

QString MprisMusicApplication::pinnedPlayersEntry() const
{
    const QString known = m_defaults.stringForKey(SettingsKey::followedPlayerEntry);
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    return known.section(u'/', 0, 0) == pinned ? known.section(u'/', 1) : QString();
}

MprisPlayer *MprisMusicApplication::playerOf(const std::optional<QString> &owner) const
{
    const std::vector<MprisPlayer *> players = m_registry->players();
    const auto found =
        std::ranges::find_if(players, [&](const MprisPlayer *player) { return player->owner() == owner; });
    return found == players.end() ? nullptr : *found;
}

std::shared_ptr<PlayerPlaylists> MprisMusicApplication::playlists() const
{
    const std::lock_guard lock(m_playlistsMutex);
    return m_playlists;
}

void MprisMusicApplication::setPlaylists(std::shared_ptr<PlayerPlaylists> playlists)
{
    const std::lock_guard lock(m_playlistsMutex);
    if (m_playlists) {
        m_playlists->stopWaiting();
    }
    m_playlists = std::move(playlists);
}

// The end of the turn

void MprisMusicApplication::finishTurnLater()
{
    if (!std::exchange(m_finishesTurn, true)) {
        QMetaObject::invokeMethod(this, &MprisMusicApplication::finishTurn, Qt::QueuedConnection);
    }
}

void MprisMusicApplication::finishTurn()
{
    m_finishesTurn = false;
    finishPlayPauses();
    const bool postsPlayerInfo = std::exchange(m_postsPlayerInfo, false);
    const bool postsSettings = std::exchange(m_postsSettings, false);
    if (postsPlayerInfo && m_player) {
        Q_EMIT playerInfo(m_player->mirror().userInfo());
    }
    if (postsSettings && m_player) {
        Q_EMIT playbackSettingsDidChange();
    }
}

void MprisMusicApplication::finishPlayPauses()
{
    const int count = std::exchange(m_playPauses, 0);
    if (count == 0) {
        return;
    }
    // Two leave Music as it was. Sent all the same they would be heard, and in some players they do not cancel out.
    if (count % 2 == 0) {
        m_player->dropPlayPause();
    } else {
        m_player->sendPlayPause();
    }
    m_postsPlayerInfo = true;
}

// Seeking while a button is held

bool MprisMusicApplication::startSeek(SeekRamp::Direction direction)
{
    const std::optional<double> position = playerPosition();
    if (!position || !m_player->isResponding() || !m_player->mirror().canSeek()) {
        return false;
    }
    m_seek.emplace(direction, *position, m_player->mirror().track().length);
    m_seekTimer.start();
    seekOn();
    return true;
}

void MprisMusicApplication::seekOn()
{
    m_player->setPosition(m_seek->advance());
}

void MprisMusicApplication::endSeek()
{
    m_seekTimer.stop();
    m_seek.reset();
}

} // namespace tunedeck

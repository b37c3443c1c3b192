// SPDX-License-Identifier: MIT
#include "music/mpris/MprisMusicApplication.h"

#include "music/mpris/PlayerPlaylists.h"
#include "music/mpris/choice/PlayerPin.h"
#include "music/mpris/choice/phoneBridge.h"
#include "platform/ApplicationLauncher.h"

#include <algorithm>

namespace tunedeck {

namespace {

/// Up to this position, "back" leads to the previous track; beyond it, to the start of the track.
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
    , m_launcher(launcher)
    , m_clock(std::move(clock))
    , m_followed(bus, defaults, m_clock, this)
    , m_followable(m_followed, defaults, this)
{
    m_seekTimer.setObjectName(QStringLiteral("seekTimer"));
    m_seekTimer.setInterval(SeekRamp::interval);
    connect(&m_seekTimer, &QTimer::timeout, this, &MprisMusicApplication::seekOn);
    connect(&m_followed, &FollowedPlayer::left, this, &MprisMusicApplication::handleLeft);
    connect(&m_followed, &FollowedPlayer::followed, this, &MprisMusicApplication::handleFollowed);
    connect(&m_followed, &FollowedPlayer::playerChanged, this, &MprisMusicApplication::handleChanged);
    connect(&m_followed, &FollowedPlayer::respondingChanged, this, [this](bool isResponding) {
        endSeek();
        Q_EMIT respondingDidChange(isResponding);
        Q_EMIT playerDidChange();
    });
    connect(&m_playerWindow, &PlayerWindow::changed, this, &MprisMusicApplication::playerDidChange);
    connect(&m_followed, &FollowedPlayer::ready, this, &MprisMusicApplication::becomeReady);
}

MprisMusicApplication::~MprisMusicApplication() = default;

void MprisMusicApplication::setBus(const QDBusConnection &bus)
{
    m_bus = bus;
    m_followed.setBus(bus);
    m_playerWindow.setBus(bus);
}

void MprisMusicApplication::refreshPlayer()
{
    if (player()) {
        player()->refresh();
    }
}

void MprisMusicApplication::setWatched(bool isWatched)
{
    m_isWatched = isWatched;
    if (!player()) {
        return;
    }
    player()->setSampled(isWatched);
    if (isWatched) {
        player()->refresh();
    }
}

bool MprisMusicApplication::canBeLaunched() const
{
    return m_launcher.canLaunch();
}

bool MprisMusicApplication::activate()
{
    if (isRunning() || !canBeLaunched()) {
        return false;
    }
    m_launcher.launch(m_followed.entriesToLaunch(), QStringLiteral("audio/mpeg"));
    return true;
}

QString MprisMusicApplication::playerName() const
{
    return player() ? player()->identity() : QString();
}

std::optional<PlayerProcess> MprisMusicApplication::playerProcess() const
{
    if (!player()) {
        return std::nullopt;
    }
    // Plasma Browser Integration has no sound of its own: it names the browser that it speaks for.
    const std::optional<qint64> browser = player()->mirror().track().browserProcessId;
    return PlayerProcess{.id = browser ? *browser : player()->processId().value_or(0),
        .isElsewhere = isOfPhoneBridge(player()->name()),
        .names = {playerFamily(player()->name()), player()->desktopEntry(), player()->identity()}};
}

bool MprisMusicApplication::canShowPlayer() const
{
    return player() && player()->isResponding() && m_playerWindow.canBeShown();
}

bool MprisMusicApplication::showPlayer(const ActivationToken &token)
{
    return canShowPlayer() && m_playerWindow.show(token);
}

std::optional<FourCharCode> MprisMusicApplication::playerState() const
{
    if (!player()) {
        return std::nullopt;
    }
    if (m_seek) {
        return m_seek->direction() == SeekRamp::Direction::Forward ? PlayerState::fastForwarding
                                                                   : PlayerState::rewinding;
    }
    switch (player()->mirror().status()) {
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
    if (!player() || player()->mirror().status() == PlaybackStatus::Stopped) {
        return std::nullopt;
    }
    const TrackDetails &track = player()->mirror().track();
    return MusicTrack{.name = nonEmpty(track.name()),
        .artist = nonEmpty(track.artist()),
        .album = nonEmpty(track.album),
        .genre = nonEmpty(track.genre),
        .duration = track.isLiveStream() ? std::nullopt : track.length};
}

std::optional<double> MprisMusicApplication::playerPosition() const
{
    return player() ? player()->mirror().position(m_clock()) : std::nullopt;
}

bool MprisMusicApplication::setPlayerPosition(double seconds)
{
    return player() && player()->commands().setPosition(seconds);
}

std::optional<int> MprisMusicApplication::soundVolume() const
{
    return player() ? player()->mirror().volumeStep() : std::nullopt;
}

bool MprisMusicApplication::setSoundVolume(qint64 volume)
{
    if (!player()) {
        return false;
    }
    // A little above the step, because cmus, mpDris2 and Clementine cut the rest off. 0 must stay silent.
    const double step = double(std::clamp<qint64>(volume, 0, 100));
    return player()->commands().setVolume(step > 0 ? std::min(1.0, (step + 0.4) / 100) : 0);
}

std::optional<bool> MprisMusicApplication::shuffleEnabled() const
{
    return player() ? player()->mirror().shuffle() : std::nullopt;
}

bool MprisMusicApplication::setShuffleEnabled(bool enabled)
{
    return shuffleEnabled() && player()->commands().setShuffle(enabled);
}

std::optional<FourCharCode> MprisMusicApplication::songRepeat() const
{
    const std::optional<LoopStatus> status = player() ? player()->mirror().loopStatus() : std::nullopt;
    return status ? std::optional(songRepeatCode(*status)) : std::nullopt;
}

bool MprisMusicApplication::setSongRepeat(FourCharCode repeat)
{
    const std::optional<LoopStatus> status = loopStatus(repeat);
    return status && songRepeat() && player()->commands().setLoopStatus(*status);
}

ControlAnswer MprisMusicApplication::answerTo(MusicControl control) const
{
    return player() ? player()->mirror().answerTo(control) : ControlAnswer::taken;
}

bool MprisMusicApplication::playpause()
{
    if (!player() || !player()->commands().playPause()) {
        return false;
    }
    m_postsPlayerInfo = true;
    finishTurnLater();
    return true;
}

bool MprisMusicApplication::nextTrack()
{
    return player() && player()->commands().next();
}

bool MprisMusicApplication::backTrack()
{
    if (!player()) {
        return false;
    }
    PlayerCommands &commands = player()->commands();
    // A track that is about to change is at its start, whatever the position of the one that is being left.
    const bool isUnderWay = !commands.isSkipping() && playerPosition().value_or(0) > startOfTrack;
    if (isUnderWay && commands.setPosition(0)) {
        return true;
    }
    return player()->mirror().canGoPrevious() ? commands.previous() : commands.setPosition(0);
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
    if (!player()) {
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

bool MprisMusicApplication::hasMorePlaylists() const
{
    const std::shared_ptr<PlayerPlaylists> followed = playlists();
    return followed && followed->hasMore();
}

bool MprisMusicApplication::playPlaylist(qint64 id)
{
    if (const std::shared_ptr<PlayerPlaylists> followed = playlists()) {
        // A thread of its own plays it.
        const auto note = [this, followed] {
            if (playlists() == followed) {
                m_followed.noteCommand();
            }
        };
        QMetaObject::invokeMethod(this, note, Qt::QueuedConnection);
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

void MprisMusicApplication::handleLeft(MprisPlayer *former)
{
    endSeek();
    former->setSampled(false);
    disconnect(former, &MprisPlayer::identityChanged, this, nullptr);
    m_playerWindow.setPlayer(std::nullopt);
    setPlaylists(nullptr);
    Q_EMIT didTerminate();
    Q_EMIT playerDidChange();
}

void MprisMusicApplication::handleFollowed(MprisPlayer *player)
{
    player->setSampled(m_isWatched);
    setPlaylists(std::make_shared<PlayerPlaylists>(m_bus, player->destination(), player->playingPlaylist()));
    connect(player, &MprisPlayer::identityChanged, this, &MprisMusicApplication::handleIdentity);
    Q_EMIT didLaunch();
    handleIdentity();
    m_postsPlayerInfo = true;
    finishTurnLater();
}

void MprisMusicApplication::handleIdentity()
{
    playlists()->setDestination(player()->destination());
    m_playerWindow.setPlayer(PlayerWindow::Player{.owner = player()->owner(),
        .destination = player()->destination(),
        .processId = player()->processId(),
        .desktopEntry = player()->desktopEntry(),
        .canRaise = player()->canRaise()});
    Q_EMIT playerDidChange();
}

void MprisMusicApplication::handleChanged(PlayerMirror::Changes changes)
{
    m_postsPlayerInfo |= changes.userInfo;
    m_postsSettings |= changes.settings;
    m_postsControls |= changes.controls;
    finishTurnLater();
}

void MprisMusicApplication::becomeReady()
{
    // The window that waited for this moment does not know the player yet.
    m_postsPlayerInfo |= isRunning();
    finishTurnLater();
    Q_EMIT ready();
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
    const bool postsPlayerInfo = std::exchange(m_postsPlayerInfo, false);
    const bool postsSettings = std::exchange(m_postsSettings, false);
    const bool postsControls = std::exchange(m_postsControls, false);
    if (postsPlayerInfo && player()) {
        m_postedDuringSeek |= m_seek.has_value();
        Q_EMIT playerInfo(player()->mirror().userInfo());
    }
    if (postsSettings && player()) {
        Q_EMIT playbackSettingsDidChange();
    }
    if (postsControls && player()) {
        Q_EMIT controlsDidChange();
    }
}

// Seeking while a button is held

bool MprisMusicApplication::startSeek(SeekRamp::Direction direction)
{
    if (!playerPosition() || !player()->isResponding() || !player()->mirror().canSeek()) {
        return false;
    }
    beginSeekHere(direction);
    m_seekTimer.start();
    seekOn();
    return true;
}

void MprisMusicApplication::beginSeekHere(SeekRamp::Direction direction)
{
    m_soughtTrack = player()->mirror().track();
    m_seek.emplace(direction, playerPosition().value_or(0), m_soughtTrack.length);
}

void MprisMusicApplication::seekOn()
{
    // The target is a place in the track before, which may be near the end of this one.
    if (!player()->mirror().track().isSameTrack(m_soughtTrack)) {
        beginSeekHere(m_seek->direction());
    }
    player()->commands().setPosition(m_seek->advance());
}

void MprisMusicApplication::endSeek()
{
    m_seekTimer.stop();
    m_seek.reset();
    // Meanwhile, posts were read together with the state of a Music that seeks.
    if (std::exchange(m_postedDuringSeek, false)) {
        m_postsPlayerInfo = true;
        finishTurnLater();
    }
}

} // namespace tunedeck

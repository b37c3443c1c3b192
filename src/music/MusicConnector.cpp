// SPDX-License-Identifier: MIT
#include "music/MusicConnector.h"

#include "music/MusicApplication.h"
#include "music/formatTime.h"
#include "music/stationLinks.h"
#include "music/typedValue.h"
#include "platform/FatalError.h"
#include "platform/WindowActivation.h"

#include <QLocale>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tunedeck {

namespace {

using namespace std::chrono_literals;

constexpr auto refreshTrackInterval = 1500ms;
constexpr auto progressPollingInterval = 500ms;

/// The elapsed and the remaining time run ahead of Music by this much, because the display is up to a poll old.
constexpr double displayLeadSeconds = 0.333;

bool isEmptyText(const std::optional<QString> &text)
{
    return text && text->isEmpty();
}

std::optional<QString> presentUnlessEmpty(const std::optional<QString> &text)
{
    return isEmptyText(text) ? std::nullopt : text;
}

FeedType feedTypeOf(const QVariantMap &userInfo)
{
    if (userInfo.isEmpty()) {
        return FeedType::unknown;
    }
    if (userInfo.size() == 1 && userInfo.contains(UserInfoKey::playerState)) {
        return FeedType::stopped;
    }
    if (!userInfo.contains(UserInfoKey::totalTime)) {
        return FeedType::liveStream;
    }
    if (userInfo.contains(UserInfoKey::location)) {
        return FeedType::localTrack;
    }
    if (userInfo.contains(UserInfoKey::storeUrl)) {
        return FeedType::streamedTrack;
    }
    return FeedType::unknown;
}

FourCharCode songRepeatOf(RepeatMode mode)
{
    switch (mode) {
    case RepeatMode::off:
        return SongRepeat::off;
    case RepeatMode::one:
        return SongRepeat::one;
    case RepeatMode::all:
        return SongRepeat::all;
    }
    fatalError("Impossible repeat mode");
}

RepeatMode repeatModeOf(FourCharCode songRepeat)
{
    switch (songRepeat) {
    case SongRepeat::all:
        return RepeatMode::all;
    case SongRepeat::one:
        return RepeatMode::one;
    default:
        return RepeatMode::off;
    }
}

} // namespace

MusicConnector::MusicConnector(MusicApplication &musicApp, const WindowActivation &windowActivation, QObject *parent)
    : QObject(parent)
    , m_musicApp(musicApp)
    , m_isMusicAppRunning(musicApp.isRunning())
    , m_jobs(musicApp, this)
{
    // Both are coarse timers, as Qt makes them by default. They are right within 5 %, and let the system wake the
    // program once for several timers.
    m_refreshTrackTimer.setObjectName(QStringLiteral("refreshTrackTimer"));
    m_refreshTrackTimer.setInterval(refreshTrackInterval);
    connect(&m_refreshTrackTimer, &QTimer::timeout, this, &MusicConnector::refreshTrackInfo);
    m_progressPollingTimer.setObjectName(QStringLiteral("progressPollingTimer"));
    m_progressPollingTimer.setInterval(progressPollingInterval);
    connect(&m_progressPollingTimer, &QTimer::timeout, this, &MusicConnector::updatePlayerProgressInfo);

    connect(&m_jobs, &BackgroundJobs::playlistsLoaded, this, &MusicConnector::applyPlaylists);
    connect(&m_jobs, &BackgroundJobs::audioOutputNamesRead, this, &MusicConnector::applyAudioOutputNames);

    connect(&m_musicApp, &MusicApplication::playerInfo, this, &MusicConnector::playerInfoDidArrive);
    connect(&m_musicApp, &MusicApplication::playbackSettingsDidChange, this, &MusicConnector::refreshPlaybackSettings);
    connect(&m_musicApp, &MusicApplication::soundDidChange, &m_jobs, &BackgroundJobs::readAudioOutputNames);
    connect(&m_musicApp, &MusicApplication::didLaunch, this, &MusicConnector::nativeMusicAppDidLaunch);
    connect(&m_musicApp, &MusicApplication::didTerminate, this, &MusicConnector::nativeMusicAppDidTerminate);
    connect(
        &windowActivation, &WindowActivation::anyWindowDidBecomeKey, this, &MusicConnector::refreshPlaybackSettings);

    if (!m_isMusicAppRunning) {
        m_feedType = FeedType::stopped;
        return;
    }
    loadPlaylists();
    m_currentState = requiredPlayerState();
    const std::optional<MusicTrack> track = m_musicApp.currentTrack();
    if (track && !isEmptyText(track->name) && !isEmptyText(track->artist) && !isEmptyText(track->album)) {
        // Two toggles leave Music in its state. They are sent for the notification that follows.
        m_musicApp.playpause();
        m_musicApp.playpause();
    }
    refreshTrackInfo();
    refreshPlaybackSettings();
}

MusicConnector::~MusicConnector() = default;

void MusicConnector::setFeedType(FeedType feedType)
{
    assign(m_feedType, feedType, &MusicConnector::feedTypeChanged);
    assign(m_isMusicAppRunning, m_musicApp.isRunning(), &MusicConnector::isMusicAppRunningChanged);
    configureTimers(feedType);
    if (feedType == FeedType::stopped) {
        resetProgress();
        assign(m_currentTrack, std::nullopt, &MusicConnector::currentTrackChanged);
    }
}

void MusicConnector::setSelectedPlaylist(const std::optional<PlaylistOption> &playlist)
{
    assign(m_selectedPlaylist, playlist, &MusicConnector::selectedPlaylistChanged);
}

double MusicConnector::duration() const
{
    if (!m_musicApp.isRunning()) {
        return 0.0;
    }
    const std::optional<MusicTrack> track = m_musicApp.currentTrack();
    if (track && track->duration && *track->duration != 0.0) {
        return *track->duration;
    }
    // A notification may hold any number. One beyond every real length must not reach the formatted times, where a
    // number beyond 64 bits is fatal.
    constexpr double longestTotalTime = 1e9;
    const double totalTime = numberFrom(m_lastUserInfo.value(UserInfoKey::totalTime)).value_or(0.0);
    return std::abs(totalTime) <= longestTotalTime ? totalTime : 0.0;
}

void MusicConnector::setWatched(bool isWatched)
{
    if (m_isWatched == isWatched) {
        return;
    }
    m_isWatched = isWatched;
    m_musicApp.setWatched(isWatched);
    if (!isWatched) {
        stopRefreshTrackTimer();
        stopProgressPollingTimer();
    } else if (!PlayerState::isIdle(m_currentState)) {
        configureTimers(m_feedType);
        refreshTrackInfo();
        updatePlayerProgressInfo();
    }
}

void MusicConnector::stopProgressPollingTimer()
{
    m_progressPollingTimer.stop();
}

void MusicConnector::stopRefreshTrackTimer()
{
    m_refreshTrackTimer.stop();
}

void MusicConnector::updatePlayerProgressInfo()
{
    const std::optional<double> position = m_musicApp.playerPosition();
    if (!position) {
        return;
    }
    const double shownPosition = *position + displayLeadSeconds;
    const double trackDuration = duration();
    assign(m_elapsedFormattedTime, formatTime(shownPosition), &MusicConnector::elapsedFormattedTimeChanged);
    const QString remaining = formatTime(trackDuration - shownPosition);
    assign(m_remainingFormattedTime, remaining == m_zeroTimeText ? remaining : u'-' + remaining,
        &MusicConnector::remainingFormattedTimeChanged);
    assign(m_totalFormattedTime, formatTime(trackDuration), &MusicConnector::totalFormattedTimeChanged);
    // The duration is read again, because an observer of the times may have moved Music on.
    assign(m_trackProgress, *position / duration() * 100.0, &MusicConnector::trackProgressChanged);
}

void MusicConnector::refreshPlaybackSettings()
{
    updatePlayerProgressInfo();
    if (m_musicApp.isRunning()) {
        assign(m_soundVolume, m_musicApp.soundVolume().value_or(0), &MusicConnector::soundVolumeChanged);
    }
    assign(m_shuffleEnabled, m_musicApp.shuffleEnabled().value_or(false), &MusicConnector::shuffleEnabledChanged);
    assign(m_repeatMode, musicRepeatMode(), &MusicConnector::repeatModeChanged);
}

void MusicConnector::refreshTrackInfo()
{
    if (m_feedType == FeedType::unknown) {
        assign(m_currentTrack, std::nullopt, &MusicConnector::currentTrackChanged);
        return;
    }
    if (!m_musicApp.isRunning()) {
        return;
    }

    const MusicTrack musicTrack = m_musicApp.currentTrack().value_or(MusicTrack());
    const std::optional<QString> name = textOrNotified(musicTrack.name, UserInfoKey::name);
    const std::optional<QString> album = presentUnlessEmpty(textOrNotified(musicTrack.album, UserInfoKey::album));
    std::optional<QString> artist = presentUnlessEmpty(textOrNotified(musicTrack.artist, UserInfoKey::artist));
    if (!artist && m_feedType == FeedType::liveStream) {
        const std::optional<QString> storeUrl = stringFrom(m_lastUserInfo.value(UserInfoKey::storeUrl));
        artist = storeUrl ? radioStationLabel(*storeUrl) : std::nullopt;
    }

    // An empty artist or album counts as absent above, so this is never true. It keeps a nameless track off the display
    // should that change.
    if (isEmptyText(name) && isEmptyText(artist) && isEmptyText(album)) {
        assign(m_currentTrack, std::nullopt, &MusicConnector::currentTrackChanged);
    } else {
        const MusicConnectorTrack track(name, artist, album, duration(), musicTrack.genre);
        if (m_currentTrack != track) {
            assign(m_currentTrack, track, &MusicConnector::currentTrackChanged);
        }
    }
    m_jobs.readAudioOutputNames();
}

void MusicConnector::refreshPlayerState()
{
    m_currentState = requiredPlayerState();
    tellDelegate();
    refreshTrackInfo();
    refreshPlaybackSettings();
}

void MusicConnector::stopProgressPollingIfIdle()
{
    const std::optional<FourCharCode> state = m_musicApp.playerState();
    if (state && PlayerState::isIdle(*state)) {
        stopProgressPollingTimer();
    }
}

void MusicConnector::setShuffle(bool enabled)
{
    if (!m_musicApp.isRunning()) {
        return;
    }
    m_musicApp.setShuffleEnabled(enabled);
    assign(m_shuffleEnabled, m_musicApp.shuffleEnabled().value_or(false), &MusicConnector::shuffleEnabledChanged);
}

void MusicConnector::setRepeat(RepeatMode mode)
{
    if (!m_musicApp.isRunning()) {
        return;
    }
    m_musicApp.setSongRepeat(songRepeatOf(mode));
    assign(m_repeatMode, musicRepeatMode(), &MusicConnector::repeatModeChanged);
}

void MusicConnector::setVolume(double value)
{
    if (!m_musicApp.isRunning()) {
        assign(m_soundVolume, 0.0, &MusicConnector::soundVolumeChanged);
        return;
    }
    assign(m_soundVolume, value, &MusicConnector::soundVolumeChanged);
    const std::optional<qint64> volume = truncatedToInt64(m_soundVolume);
    if (!volume) {
        fatalError("The volume is not finite or beyond 64 bits");
    }
    m_musicApp.setSoundVolume(*volume);
}

void MusicConnector::adjustVolume(double delta)
{
    // Not std::clamp(), which is undefined for a value that is not a number. setVolume() must get that value.
    double volume = m_soundVolume + delta;
    if (volume < 0.0) {
        volume = 0.0;
    } else if (volume > 100.0) {
        volume = 100.0;
    }
    setVolume(volume);
}

void MusicConnector::loadPlaylists()
{
    m_jobs.loadPlaylists();
}

void MusicConnector::playSelectedPlaylist()
{
    if (m_selectedPlaylist) {
        m_jobs.playPlaylist(m_selectedPlaylist->id);
    }
}

void MusicConnector::playerInfoDidArrive(const QVariantMap &userInfo)
{
    m_lastUserInfo = userInfo;
    setCurrentPersistentId(integerFrom(userInfo.value(UserInfoKey::persistentId)));
    setFeedType(feedTypeOf(userInfo));
    if (m_feedType == FeedType::stopped) {
        m_currentState = PlayerState::stopped;
        tellDelegate();
        return;
    }
    refreshPlayerState();
    // The feed type starts timers that find nothing while Music is paused. The notification that it plays again starts
    // them again.
    if (PlayerState::isIdle(m_currentState)) {
        stopProgressPollingTimer();
        stopRefreshTrackTimer();
    }
}

void MusicConnector::nativeMusicAppDidLaunch()
{
    assign(m_isMusicAppRunning, true, &MusicConnector::isMusicAppRunningChanged);
    if (m_playlistOptions.isEmpty()) {
        loadPlaylists();
    }
    refreshPlaybackSettings();
}

void MusicConnector::nativeMusicAppDidTerminate()
{
    // A load under way would otherwise fill the list again. They are cancelled before
    // anything is announced, so that a job which a listener starts meanwhile belongs to the next session.
    m_jobs.cancel();
    assign(m_isMusicAppRunning, false, &MusicConnector::isMusicAppRunningChanged);
    stopRefreshTrackTimer();
    stopProgressPollingTimer();
    m_lastUserInfo.clear();
    setCurrentPersistentId(std::nullopt);
    resetProgress();
    setSelectedPlaylist(std::nullopt);
    m_playlistSource = PlaylistSource::unknown;
    m_hasMorePlaylists = false;
    assign(m_playlistOptions, {}, &MusicConnector::playlistOptionsChanged);
    assign(m_soundVolume, 0.0, &MusicConnector::soundVolumeChanged);
    assign(m_shuffleEnabled, false, &MusicConnector::shuffleEnabledChanged);
    assign(m_repeatMode, RepeatMode::off, &MusicConnector::repeatModeChanged);
    assign(m_audioOutputNames, std::nullopt, &MusicConnector::audioOutputNamesChanged);
    assign(m_currentTrack, std::nullopt, &MusicConnector::currentTrackChanged);
    m_currentState = PlayerState::stopped;
    tellDelegate();
    setFeedType(FeedType::unknown);
}

FourCharCode MusicConnector::requiredPlayerState() const
{
    const std::optional<FourCharCode> state = m_musicApp.playerState();
    if (!state) {
        fatalError("Music does not answer playerState");
    }
    return *state;
}

RepeatMode MusicConnector::musicRepeatMode() const
{
    return repeatModeOf(m_musicApp.songRepeat().value_or(SongRepeat::off));
}

std::optional<QString> MusicConnector::textOrNotified(const std::optional<QString> &answer, const QString &key) const
{
    return answer ? answer : stringFrom(m_lastUserInfo.value(key));
}

void MusicConnector::configureTimers(FeedType feedType)
{
    switch (feedType) {
    case FeedType::liveStream:
        startRefreshTrackTimer();
        stopProgressPollingTimer();
        return;
    case FeedType::localTrack:
        stopRefreshTrackTimer();
        startProgressPollingUnlessIdle();
        return;
    case FeedType::streamedTrack:
        startRefreshTrackTimer();
        startProgressPollingUnlessIdle();
        return;
    case FeedType::stopped:
    case FeedType::unknown:
        stopRefreshTrackTimer();
        stopProgressPollingTimer();
        return;
    }
    fatalError("Impossible feed type");
}

void MusicConnector::startRefreshTrackTimer()
{
    if (m_isWatched) {
        m_refreshTrackTimer.start();
    }
}

void MusicConnector::startProgressPollingUnlessIdle()
{
    if (m_isWatched && !PlayerState::isIdle(requiredPlayerState())) {
        m_progressPollingTimer.start();
    }
}

void MusicConnector::setCurrentPersistentId(std::optional<qint64> id)
{
    if (m_currentPersistentId == id) {
        return;
    }
    m_currentPersistentId = id;
    resetProgress();
}

void MusicConnector::resetProgress()
{
    assign(m_trackProgress, 0.0, &MusicConnector::trackProgressChanged);
    assign(m_elapsedFormattedTime, m_zeroTimeText, &MusicConnector::elapsedFormattedTimeChanged);
    assign(m_remainingFormattedTime, m_zeroTimeText, &MusicConnector::remainingFormattedTimeChanged);
    assign(m_totalFormattedTime, m_zeroTimeText, &MusicConnector::totalFormattedTimeChanged);
}

void MusicConnector::tellDelegate()
{
    if (m_delegate) {
        m_delegate->playerStateDidChange(m_currentState);
    }
}

void MusicConnector::applyPlaylists(const LoadedPlaylists &playlists)
{
    m_playlistSource = playlists.source;
    const bool isSame = m_hasMorePlaylists == playlists.hasMore;
    m_hasMorePlaylists = playlists.hasMore;
    if (isSame) {
        assign(m_playlistOptions, playlists.options, &MusicConnector::playlistOptionsChanged);
    } else {
        m_playlistOptions = playlists.options;
        Q_EMIT playlistOptionsChanged();
    }
    setSelectedPlaylist(playlists.current);
}

void MusicConnector::applyAudioOutputNames(const QStringList &names)
{
    if (names.isEmpty()) {
        assign(m_audioOutputNames, std::nullopt, &MusicConnector::audioOutputNamesChanged);
        return;
    }
    const QString joined = QLocale().createSeparatedList(names);
    if (m_audioOutputNames != joined) {
        assign(m_audioOutputNames, joined, &MusicConnector::audioOutputNamesChanged);
    }
}

} // namespace tunedeck

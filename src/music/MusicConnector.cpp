// SPDX-License-Identifier: MIT
#include "music/MusicConnector.h"

#include "music/MusicApplication.h"
#include "music/formatTime.h"
#include "music/stationLinks.h"
#include "music/truncatedToInt64.h"
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

/// The two times run ahead of Music by this much: what is on the display is up to a poll old when it is looked at.
constexpr double displayLeadSeconds = 0.333;

struct LoadedPlaylists {
    QList<PlaylistOption> options;
    PlaylistSource source = PlaylistSource::unknown;
    std::optional<PlaylistOption> current;
};

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

/// None if there is no column or one of its elements is not what `convert` reads.
template <typename Value>
std::optional<QList<Value>> convertedColumn(
    const std::optional<QVariantList> &column, std::optional<Value> (*convert)(const QVariant &))
{
    if (!column) {
        return std::nullopt;
    }
    QList<Value> values;
    values.reserve(column->size());
    for (const QVariant &element : *column) {
        const std::optional<Value> value = convert(element);
        if (!value) {
            return std::nullopt;
        }
        values.append(*value);
    }
    return values;
}

std::optional<LoadedPlaylists> readPlaylists(const MusicApplication &musicApp)
{
    const std::optional<MusicPlaylist> currentPlaylist = musicApp.currentPlaylist();
    const auto ids = convertedColumn(musicApp.playlistIds(), integerFrom);
    if (!ids) {
        return std::nullopt;
    }
    const auto names = convertedColumn(musicApp.playlistNames(), stringFrom);
    if (!names) {
        return std::nullopt;
    }

    LoadedPlaylists loaded;
    loaded.source = musicApp.playlistSource();
    const qsizetype count = std::min(ids->size(), names->size());
    loaded.options.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        loaded.options.append(PlaylistOption{ids->at(i), names->at(i)});
        if (currentPlaylist && currentPlaylist->id == ids->at(i)) {
            loaded.current = loaded.options.constLast();
        }
    }
    return loaded;
}

bool playUnlessCurrent(MusicApplication &musicApp, qint64 playlistId)
{
    const std::optional<MusicPlaylist> currentPlaylist = musicApp.currentPlaylist();
    const bool isCurrent = currentPlaylist && currentPlaylist->id == playlistId;
    return !isCurrent && musicApp.playPlaylist(playlistId);
}

QStringList readAudioOutputNames(const MusicApplication &musicApp)
{
    QStringList names;
    const auto devices = musicApp.currentAirPlayDevices().value_or(QList<MusicAirPlayDevice>());
    for (const MusicAirPlayDevice &device : devices) {
        if (device.kind == AirPlayDeviceKind::unknown || device.kind == AirPlayDeviceKind::computer) {
            continue;
        }
        if (device.name) {
            names.append(*device.name);
        }
    }
    return names;
}

} // namespace

MusicConnector::MusicConnector(MusicApplication &musicApp, const WindowActivation &windowActivation, QObject *parent)
    : QObject(parent)
    , m_musicApp(musicApp)
    , m_isMusicAppRunning(musicApp.isRunning())
{
    // Both stay the coarse timers that Qt makes by default: they hold within 5 %, 25 ms of a displayed second, and let
    // the system wake the program once for what falls due together.
    m_refreshTrackTimer.setObjectName(QStringLiteral("refreshTrackTimer"));
    m_refreshTrackTimer.setInterval(refreshTrackInterval);
    connect(&m_refreshTrackTimer, &QTimer::timeout, this, &MusicConnector::refreshTrackInfo);
    m_progressPollingTimer.setObjectName(QStringLiteral("progressPollingTimer"));
    m_progressPollingTimer.setInterval(progressPollingInterval);
    connect(&m_progressPollingTimer, &QTimer::timeout, this, &MusicConnector::updatePlayerProgressInfo);

    // The three jobs wait rather than work, and none is to wait for another, not even on a single processor.
    m_background.setMaxThreadCount(3);

    connect(&m_musicApp, &MusicApplication::playerInfo, this, &MusicConnector::playerInfoDidArrive);
    connect(&m_musicApp, &MusicApplication::playbackSettingsDidChange, this, &MusicConnector::refreshPlaybackSettings);
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
        // Twice, so that Music ends in the state it was in: all that is wanted is the notification that follows.
        m_musicApp.playpause();
        m_musicApp.playpause();
    }
    refreshTrackInfo();
    refreshPlaybackSettings();
}

MusicConnector::~MusicConnector()
{
    // What is running talks to Music and posts to this object: both must still be whole.
    m_background.clear();
    m_musicApp.endBackground();
    m_background.waitForDone();
}

void MusicConnector::setDelegate(MusicConnectorDelegate *delegate)
{
    m_delegate = delegate;
}

MusicApplication &MusicConnector::musicApp() const
{
    return m_musicApp;
}

bool MusicConnector::isMusicAppRunning() const
{
    return m_isMusicAppRunning;
}

const std::optional<MusicConnectorTrack> &MusicConnector::currentTrack() const
{
    return m_currentTrack;
}

double MusicConnector::trackProgress() const
{
    return m_trackProgress;
}

QString MusicConnector::elapsedFormattedTime() const
{
    return m_elapsedFormattedTime;
}

QString MusicConnector::remainingFormattedTime() const
{
    return m_remainingFormattedTime;
}

QString MusicConnector::totalFormattedTime() const
{
    return m_totalFormattedTime;
}

FeedType MusicConnector::feedType() const
{
    return m_feedType;
}

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

FourCharCode MusicConnector::currentState() const
{
    return m_currentState;
}

double MusicConnector::soundVolume() const
{
    return m_soundVolume;
}

bool MusicConnector::shuffleEnabled() const
{
    return m_shuffleEnabled;
}

RepeatMode MusicConnector::repeatMode() const
{
    return m_repeatMode;
}

const QList<PlaylistOption> &MusicConnector::playlistOptions() const
{
    return m_playlistOptions;
}

PlaylistSource MusicConnector::playlistSource() const
{
    return m_playlistSource;
}

const std::optional<PlaylistOption> &MusicConnector::selectedPlaylist() const
{
    return m_selectedPlaylist;
}

void MusicConnector::setSelectedPlaylist(const std::optional<PlaylistOption> &playlist)
{
    assign(m_selectedPlaylist, playlist, &MusicConnector::selectedPlaylistChanged);
}

const std::optional<QString> &MusicConnector::audioOutputNames() const
{
    return m_audioOutputNames;
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
    // Unlike Music's answers, a notification is taken as it came: a number beyond any real length must not get as far
    // as the times, where one beyond 64 bits is a programming error.
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

bool MusicConnector::isRefreshTrackTimerActive() const
{
    return m_refreshTrackTimer.isActive();
}

bool MusicConnector::isProgressPollingTimerActive() const
{
    return m_progressPollingTimer.isActive();
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
    // Asked again: an observer of the times may have moved Music on.
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

    // Cannot hold while an empty artist or album counts as absent; it keeps a nameless track off the display if that
    // should ever change.
    if (isEmptyText(name) && isEmptyText(artist) && isEmptyText(album)) {
        assign(m_currentTrack, std::nullopt, &MusicConnector::currentTrackChanged);
    } else {
        const MusicConnectorTrack track(name, artist, album, duration(), musicTrack.genre);
        if (m_currentTrack != track) {
            assign(m_currentTrack, track, &MusicConnector::currentTrackChanged);
        }
    }
    refreshAudioOutputNames();
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
    // Not std::clamp: it does not take what is not a number, which setVolume() is to see.
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
    if (m_isLoadingPlaylists || !m_musicApp.isRunning()) {
        return;
    }
    m_isLoadingPlaylists = true;
    workInBackground(readPlaylists, [this](const std::optional<LoadedPlaylists> &loaded) {
        m_isLoadingPlaylists = false;
        if (!loaded) {
            return;
        }
        m_playlistSource = loaded->source;
        assign(m_playlistOptions, loaded->options, &MusicConnector::playlistOptionsChanged);
        setSelectedPlaylist(loaded->current);
    });
}

void MusicConnector::playSelectedPlaylist()
{
    if (m_isPlayingPlaylist || !m_selectedPlaylist) {
        return;
    }
    m_isPlayingPlaylist = true;
    workInBackground(
        [id = m_selectedPlaylist->id](MusicApplication &musicApp) { return playUnlessCurrent(musicApp, id); },
        [this](bool) { m_isPlayingPlaylist = false; });
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
    // The feed type alone lets timers run that have nothing to find while Music is paused, also when it was paused from
    // elsewhere. The notification of its playing again starts them.
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
    // A load under way would otherwise fill the list again, and those not begun would wait for a Music that is gone.
    ++m_musicSession;
    m_background.clear();
    m_isReadingAudioOutputs = false;
    m_shallReadAudioOutputsAgain = false;

    assign(m_isMusicAppRunning, false, &MusicConnector::isMusicAppRunningChanged);
    stopRefreshTrackTimer();
    stopProgressPollingTimer();
    m_lastUserInfo.clear();
    setCurrentPersistentId(std::nullopt);
    resetProgress();
    m_isLoadingPlaylists = false;
    m_isPlayingPlaylist = false;
    setSelectedPlaylist(std::nullopt);
    m_playlistSource = PlaylistSource::unknown;
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

void MusicConnector::refreshAudioOutputNames()
{
    // Only one at a time: the track timer asks every 1.5 s, and Music may take longer than that to answer.
    m_shallReadAudioOutputsAgain = m_isReadingAudioOutputs;
    if (m_isReadingAudioOutputs || !m_musicApp.isRunning()) {
        return;
    }
    m_isReadingAudioOutputs = true;
    workInBackground(readAudioOutputNames, [this](const QStringList &names) { audioOutputNamesWereRead(names); });
}

void MusicConnector::audioOutputNamesWereRead(const QStringList &names)
{
    m_isReadingAudioOutputs = false;
    if (m_shallReadAudioOutputsAgain) {
        refreshAudioOutputNames();
    }

    if (names.isEmpty()) {
        assign(m_audioOutputNames, std::nullopt, &MusicConnector::audioOutputNamesChanged);
        return;
    }
    const QString joined = QLocale().createSeparatedList(names);
    if (m_audioOutputNames != joined) {
        assign(m_audioOutputNames, joined, &MusicConnector::audioOutputNamesChanged);
    }
}

template <typename Work, typename Apply> void MusicConnector::workInBackground(Work work, Apply apply)
{
    m_background.start([this, work, apply, session = m_musicSession] {
        const auto handOver = [this, apply, session, result = work(m_musicApp)] {
            if (session == m_musicSession) {
                apply(result);
            }
        };
        QMetaObject::invokeMethod(this, handOver, Qt::QueuedConnection);
    });
}

} // namespace tunedeck

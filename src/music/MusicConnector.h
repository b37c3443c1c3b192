// SPDX-License-Identifier: MIT
#pragma once

#include "music/BackgroundJobs.h"
#include "music/MusicConnectorTrack.h"
#include "music/MusicTypes.h"
#include "music/PlaylistOption.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <optional>
#include <type_traits>
#include <utility>

namespace tunedeck {

class MusicApplication;
class WindowActivation;

/// A listener to Music's player state; see MusicConnector::setDelegate().
class MusicConnectorDelegate {
public:
    virtual ~MusicConnectorDelegate() = default;
    /// `state` is one of PlayerState, or another code, which counts as playing.
    virtual void playerStateDidChange(FourCharCode state) = 0;
};

/// Publishes what Music is doing, for the whole program. It follows Music's notifications. While Music plays, it reads
/// the track again every 1.5 s (streamed content) and the position every 0.5 s (content with a duration).
///
/// Every observable property announces every assignment, even of an equal value.
class MusicConnector : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isMusicAppRunning READ isMusicAppRunning NOTIFY isMusicAppRunningChanged)
    Q_PROPERTY(std::optional<tunedeck::MusicConnectorTrack> currentTrack READ currentTrack NOTIFY currentTrackChanged)
    Q_PROPERTY(double trackProgress READ trackProgress NOTIFY trackProgressChanged)
    Q_PROPERTY(QString elapsedFormattedTime READ elapsedFormattedTime NOTIFY elapsedFormattedTimeChanged)
    Q_PROPERTY(QString remainingFormattedTime READ remainingFormattedTime NOTIFY remainingFormattedTimeChanged)
    Q_PROPERTY(QString totalFormattedTime READ totalFormattedTime NOTIFY totalFormattedTimeChanged)
    Q_PROPERTY(tunedeck::FeedType feedType READ feedType WRITE setFeedType NOTIFY feedTypeChanged)
    Q_PROPERTY(double soundVolume READ soundVolume NOTIFY soundVolumeChanged)
    Q_PROPERTY(bool shuffleEnabled READ shuffleEnabled NOTIFY shuffleEnabledChanged)
    Q_PROPERTY(tunedeck::RepeatMode repeatMode READ repeatMode NOTIFY repeatModeChanged)
    Q_PROPERTY(QList<tunedeck::PlaylistOption> playlistOptions READ playlistOptions NOTIFY playlistOptionsChanged)
    Q_PROPERTY(std::optional<tunedeck::PlaylistOption> selectedPlaylist READ selectedPlaylist WRITE setSelectedPlaylist
            NOTIFY selectedPlaylistChanged)
    Q_PROPERTY(std::optional<QString> audioOutputNames READ audioOutputNames NOTIFY audioOutputNamesChanged)

public:
    /// Reads Music's state at once. `musicApp` and `windowActivation` must outlive the connector.
    MusicConnector(MusicApplication &musicApp, const WindowActivation &windowActivation, QObject *parent = nullptr);
    ~MusicConnector() override;

    /// The delegate gets the player state after every notification and when Music quits. It must outlive the connector,
    /// or be replaced by null.
    void setDelegate(MusicConnectorDelegate *delegate) { m_delegate = delegate; }
    [[nodiscard]] MusicApplication &musicApp() const { return m_musicApp; }

    [[nodiscard]] bool isMusicAppRunning() const { return m_isMusicAppRunning; }
    /// None while nothing plays.
    [[nodiscard]] const std::optional<MusicConnectorTrack> &currentTrack() const { return m_currentTrack; }
    /// Percent of the duration, 0 to 100; infinite or not a number while the duration is 0.
    [[nodiscard]] double trackProgress() const { return m_trackProgress; }
    [[nodiscard]] QString elapsedFormattedTime() const { return m_elapsedFormattedTime; }
    /// The remaining time with a leading "-", unless it is zero.
    [[nodiscard]] QString remainingFormattedTime() const { return m_remainingFormattedTime; }
    [[nodiscard]] QString totalFormattedTime() const { return m_totalFormattedTime; }
    [[nodiscard]] FeedType feedType() const { return m_feedType; }
    /// Also sets the timers for the content and, for FeedType::stopped, clears the track and the times.
    void setFeedType(FeedType feedType);
    /// The player state last read. Not observable.
    [[nodiscard]] FourCharCode currentState() const { return m_currentState; }
    /// 0 to 100.
    [[nodiscard]] double soundVolume() const { return m_soundVolume; }
    [[nodiscard]] bool shuffleEnabled() const { return m_shuffleEnabled; }
    [[nodiscard]] RepeatMode repeatMode() const { return m_repeatMode; }
    [[nodiscard]] const QList<PlaylistOption> &playlistOptions() const { return m_playlistOptions; }
    /// Changes with the playlist options.
    [[nodiscard]] PlaylistSource playlistSource() const { return m_playlistSource; }
    /// Whether Music has more playlists than the options. Changes with them.
    [[nodiscard]] bool hasMorePlaylists() const { return m_hasMorePlaylists; }
    [[nodiscard]] const std::optional<PlaylistOption> &selectedPlaylist() const { return m_selectedPlaylist; }
    void setSelectedPlaylist(const std::optional<PlaylistOption> &playlist);
    /// The names of the outputs that Music plays to, joined for display; none if that is the computer's own alone.
    [[nodiscard]] const std::optional<QString> &audioOutputNames() const { return m_audioOutputNames; }
    /// Seconds: Music's own answer, else the time in its last notification, else 0.
    [[nodiscard]] double duration() const;

    /// Whether the display is visible; at first it is. While it is not, the timers rest, and only Music's own
    /// notifications are followed. When it is visible again, the track and the position are read at once.
    void setWatched(bool isWatched);
    [[nodiscard]] bool isRefreshTrackTimerActive() const { return m_refreshTrackTimer.isActive(); }
    [[nodiscard]] bool isProgressPollingTimerActive() const { return m_progressPollingTimer.isActive(); }
    void stopProgressPollingTimer();
    void stopRefreshTrackTimer();

    /// Reads the position again and recomputes the progress and the three times.
    void updatePlayerProgressInfo();
    /// updatePlayerProgressInfo(), then volume, shuffle and repeat.
    void refreshPlaybackSettings();
    /// Rebuilds the current track from Music and its last notification.
    void refreshTrackInfo();
    /// Reads the player state, passes it to the delegate, then refreshes the track and the playback settings.
    void refreshPlayerState();

    /// Stops the progress timer if Music is paused or stopped, as right after a play/pause command.
    void stopProgressPollingIfIdle();
    void setShuffle(bool enabled);
    void setRepeat(RepeatMode mode);
    /// Sets Music's volume to the integer part of `value`. A value that is not finite or does not fit into 64 bits
    /// is fatal.
    void setVolume(double value);
    /// Changes the volume by `delta`, within 0 to 100.
    void adjustVolume(double delta);

    /// Loads the playlists in the background. Does nothing while a load is under way.
    void loadPlaylists();
    /// Plays the selected playlist in the background, unless Music plays it already; see
    /// BackgroundJobs::playPlaylist().
    void playSelectedPlaylist();

Q_SIGNALS:
    void isMusicAppRunningChanged(bool isRunning);
    void currentTrackChanged();
    void trackProgressChanged(double progress);
    void elapsedFormattedTimeChanged(const QString &time);
    void remainingFormattedTimeChanged(const QString &time);
    void totalFormattedTimeChanged(const QString &time);
    void feedTypeChanged(tunedeck::FeedType feedType);
    void soundVolumeChanged(double volume);
    void shuffleEnabledChanged(bool enabled);
    void repeatModeChanged(tunedeck::RepeatMode mode);
    void playlistOptionsChanged();
    void selectedPlaylistChanged();
    void audioOutputNamesChanged();

private:
    void playerInfoDidArrive(const QVariantMap &userInfo);
    void nativeMusicAppDidLaunch();
    void nativeMusicAppDidTerminate();

    [[nodiscard]] FourCharCode requiredPlayerState() const;
    [[nodiscard]] RepeatMode musicRepeatMode() const;
    /// Music's own `answer`, else the text its last notification has under `key`.
    [[nodiscard]] std::optional<QString> textOrNotified(const std::optional<QString> &answer, const QString &key) const;

    void configureTimers(FeedType feedType);
    void startRefreshTrackTimer();
    void startProgressPollingUnlessIdle();
    void setCurrentPersistentId(std::optional<qint64> id);
    void resetProgress();
    void tellDelegate();

    void applyPlaylists(const LoadedPlaylists &playlists);
    void applyAudioOutputNames(const QStringList &names);

    template <typename Value, typename... Announced>
    void assign(
        Value &property, std::type_identity_t<Value> value, void (MusicConnector::*changed)(Announced... announced))
    {
        property = std::move(value);
        if constexpr (sizeof...(Announced) == 0) {
            Q_EMIT(this->*changed)();
        } else {
            Q_EMIT(this->*changed)(property);
        }
    }

    const QString m_zeroTimeText = tr("0:00", "For UI labels: 0:00");
    MusicApplication &m_musicApp;
    MusicConnectorDelegate *m_delegate = nullptr;

    bool m_isMusicAppRunning;
    std::optional<MusicConnectorTrack> m_currentTrack;
    double m_trackProgress = 0.0;
    QString m_elapsedFormattedTime = m_zeroTimeText;
    QString m_remainingFormattedTime = m_zeroTimeText;
    QString m_totalFormattedTime = m_zeroTimeText;
    FeedType m_feedType = FeedType::unknown;
    FourCharCode m_currentState = PlayerState::stopped;
    double m_soundVolume = 0.0;
    bool m_shuffleEnabled = false;
    RepeatMode m_repeatMode = RepeatMode::off;
    QList<PlaylistOption> m_playlistOptions;
    PlaylistSource m_playlistSource = PlaylistSource::unknown;
    bool m_hasMorePlaylists = false;
    std::optional<PlaylistOption> m_selectedPlaylist;
    std::optional<QString> m_audioOutputNames;

    bool m_isWatched = true;
    QTimer m_refreshTrackTimer{this};
    QTimer m_progressPollingTimer{this};
    /// Empty if there was none since Music launched.
    QVariantMap m_lastUserInfo;
    std::optional<qint64> m_currentPersistentId;

    BackgroundJobs m_jobs;
};

} // namespace tunedeck

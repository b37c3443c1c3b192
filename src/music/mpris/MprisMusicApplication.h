// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicApplication.h"
#include "music/mpris/Instant.h"
#include "music/mpris/PlayerChoice.h"
#include "music/mpris/PlayerRegistry.h"
#include "music/mpris/SeekRamp.h"

#include <QDBusConnection>
#include <QTimer>

#include <memory>
#include <mutex>
#include <optional>

namespace tunedeck {

class ApplicationLauncher;
class PlayerPlaylists;
class UserDefaults;

/// A player that can be followed.
struct FollowablePlayer {
    QString family; ///< what the setting "FollowedPlayer" calls it
    QString identity; ///< what it calls itself; plain text

    bool operator==(const FollowablePlayer &) const = default;
};

/// Music over MPRIS2: of the players on the session bus the one to follow; see choosePlayer(). A change to another
/// player is Music quitting and launching.
///
/// Reads are answered from the mirror of the player, commands are sent and not waited for. While the player does not
/// respond, commands are not sent and answer false.
class MprisMusicApplication : public MusicApplication {
    Q_OBJECT

public:
    /// `defaults` and `launcher` must outlive this object.
    MprisMusicApplication(const QDBusConnection &bus, UserDefaults &defaults, ApplicationLauncher &launcher,
        Clock clock = std::chrono::steady_clock::now, QObject *parent = nullptr);
    ~MprisMusicApplication() override;

    /// Looks for players on another bus from now on, or on none where `bus` is not connected; the player that was
    /// followed is gone.
    void setBus(const QDBusConnection &bus);
    /// Whether the players that were there at the start have been found.
    [[nodiscard]] bool isReady() const;
    /// The players on the bus, each family once, in the order in which they came.
    [[nodiscard]] QList<FollowablePlayer> followablePlayers() const;
    /// Asks the player anew for everything it does not announce.
    void refreshPlayer();

    [[nodiscard]] bool isRunning() const override;
    [[nodiscard]] bool isResponding() const override;
    bool activate() override;
    void setWatched(bool isWatched) override;

    [[nodiscard]] std::optional<FourCharCode> playerState() const override;
    [[nodiscard]] std::optional<MusicTrack> currentTrack() const override;
    [[nodiscard]] std::optional<double> playerPosition() const override;
    bool setPlayerPosition(double seconds) override;
    [[nodiscard]] std::optional<int> soundVolume() const override;
    bool setSoundVolume(qint64 volume) override;
    [[nodiscard]] std::optional<bool> shuffleEnabled() const override;
    bool setShuffleEnabled(bool enabled) override;
    [[nodiscard]] std::optional<FourCharCode> songRepeat() const override;
    bool setSongRepeat(FourCharCode repeat) override;

    bool playpause() override;
    bool nextTrack() override;
    bool backTrack() override;
    bool fastForward() override;
    bool rewind() override;
    bool resume() override;

    [[nodiscard]] std::optional<MusicPlaylist> currentPlaylist() const override;
    [[nodiscard]] std::optional<QVariantList> playlistIds() const override;
    [[nodiscard]] std::optional<QVariantList> playlistNames() const override;
    [[nodiscard]] PlaylistSource playlistSource() const override;
    bool playPlaylist(qint64 id) override;
    [[nodiscard]] std::optional<QList<MusicAirPlayDevice>> currentAirPlayDevices() const override;
    void endBackground() override;

Q_SIGNALS:
    void ready();
    void followablePlayersChanged();

private:
    void followRegistry();
    void playerAttached(MprisPlayer *player);
    void playerChanged(MprisPlayer *player, PlayerMirror::Changes changes);
    void playerRemoved(MprisPlayer *player);
    void becomeReady();

    [[nodiscard]] QList<PlayerCandidate> candidates() const;
    void reconsiderPlayer();
    void follow(MprisPlayer *player);
    void changePlayer(MprisPlayer *player);
    /// Keeps in mind what to open once the player that is followed does not run any more.
    void rememberPlayer();
    void remember(const QString &key, const QString &text);
    /// The desktop entry that the pinned player had when it was followed; empty where none is known.
    [[nodiscard]] QString pinnedPlayersEntry() const;
    [[nodiscard]] MprisPlayer *playerOf(const std::optional<QString> &owner) const;
    /// Those of the player that is followed; null while there is none. May be called from any thread.
    [[nodiscard]] std::shared_ptr<PlayerPlaylists> playlists() const;
    /// Lets go whoever waits for the former ones.
    void setPlaylists(std::shared_ptr<PlayerPlaylists> playlists);

    /// Signals and the play/pause command wait for the end of this turn of the event loop.
    void finishTurnLater();
    void finishTurn();
    void finishPlayPauses();

    bool startSeek(SeekRamp::Direction direction);
    void seekOn();
    void endSeek();

    QDBusConnection m_bus;
    UserDefaults &m_defaults;
    ApplicationLauncher &m_launcher;
    Clock m_clock;
    std::unique_ptr<PlayerRegistry> m_registry;
    MprisPlayer *m_player = nullptr;
    bool m_isWatched = true;
    QHash<QString, quint64> m_lastPlayed; ///< by owner: a number that grows with time
    quint64 m_plays = 0;

    mutable std::mutex m_playlistsMutex;
    std::shared_ptr<PlayerPlaylists> m_playlists;

    std::optional<SeekRamp> m_seek;
    QTimer m_seekTimer{this};

    bool m_finishesTurn = false;
    int m_playPauses = 0;
    bool m_postsPlayerInfo = false;
    bool m_postsSettings = false;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicApplication.h"
#include "music/mpris/FollowedPlayer.h"
#include "music/mpris/MprisFollowablePlayers.h"
#include "music/mpris/SeekRamp.h"
#include "music/mpris/bus/Instant.h"
#include "music/mpris/desktop/PlayerWindow.h"
#include "platform/DesktopEntries.h"

#include <QDBusConnection>
#include <QTimer>

#include <memory>
#include <mutex>
#include <optional>

namespace tunedeck {

class ApplicationLauncher;
class PlayerPlaylists;
class UserDefaults;

/// Music over MPRIS2: the followed one of the players on the session bus. A change of player is Music quitting and
/// launching.
///
/// Reads are answered from the player's mirror; nothing waits for the answer to a command. While the player is not
/// responding, commands are not sent and return false.
class MprisMusicApplication : public MusicApplication {
    Q_OBJECT

public:
    /// `defaults` and `launcher` must outlive this object.
    MprisMusicApplication(const QDBusConnection &bus, UserDefaults &defaults, ApplicationLauncher &launcher,
        Clock clock = std::chrono::steady_clock::now, QObject *parent = nullptr);
    ~MprisMusicApplication() override;

    /// Leaves the player, then looks for players on `bus`; for none if `bus` is not connected.
    void setBus(const QDBusConnection &bus);
    /// Whether the players that were on the bus at the start have been found.
    [[nodiscard]] bool isReady() const { return m_followed.isReady(); }
    /// The players that the user can choose from.
    [[nodiscard]] FollowablePlayers &followablePlayers() { return m_followable; }
    /// The desktop's entries of players, which have their icons.
    [[nodiscard]] DesktopEntries &desktopEntries() { return m_desktopEntries; }
    /// Reads everything from the player again, including what it does not announce.
    void refreshPlayer();

    [[nodiscard]] bool isRunning() const override { return player() != nullptr; }
    [[nodiscard]] bool isResponding() const override { return m_followed.isResponding(); }
    [[nodiscard]] bool canBeLaunched() const override;
    bool activate() override;
    void setWatched(bool isWatched) override;

    [[nodiscard]] QString playerName() const override;
    [[nodiscard]] std::optional<PlayerProcess> playerProcess() const override;
    [[nodiscard]] bool canShowPlayer() const override;
    bool showPlayer(const ActivationToken &token) override;

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
    [[nodiscard]] ControlAnswer answerTo(MusicControl control) const override;

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
    [[nodiscard]] bool hasMorePlaylists() const override;
    bool playPlaylist(qint64 id) override;
    [[nodiscard]] std::optional<QList<MusicAirPlayDevice>> currentAirPlayDevices() const override;
    void endBackground() override;

Q_SIGNALS:
    void ready();

private:
    [[nodiscard]] MprisPlayer *player() const { return m_followed.player(); }
    void handleLeft(MprisPlayer *former);
    void handleFollowed(MprisPlayer *player);
    void handleIdentity();
    void handleChanged(PlayerMirror::Changes changes);
    void becomeReady();

    /// The playlists of the followed player; null while there is none. May be called from any thread.
    [[nodiscard]] std::shared_ptr<PlayerPlaylists> playlists() const;
    /// Lets the threads go that wait for the former ones.
    void setPlaylists(std::shared_ptr<PlayerPlaylists> playlists);

    /// Signals wait for the end of this turn of the event loop.
    void finishTurnLater();
    void finishTurn();

    bool startSeek(SeekRamp::Direction direction);
    void beginSeekHere(SeekRamp::Direction direction);
    void seekOn();
    void endSeek();

    QDBusConnection m_bus;
    ApplicationLauncher &m_launcher;
    Clock m_clock;
    FollowedPlayer m_followed;
    MprisFollowablePlayers m_followable;
    DesktopEntries m_desktopEntries;
    PlayerWindow m_playerWindow{m_bus, m_desktopEntries, this};
    bool m_isWatched = true;

    mutable std::mutex m_playlistsMutex;
    std::shared_ptr<PlayerPlaylists> m_playlists;

    std::optional<SeekRamp> m_seek;
    TrackDetails m_soughtTrack;
    bool m_postedDuringSeek = false;
    QTimer m_seekTimer{this};

    bool m_finishesTurn = false;
    bool m_postsPlayerInfo = false;
    bool m_postsSettings = false;
    bool m_postsControls = false;
};

} // namespace tunedeck

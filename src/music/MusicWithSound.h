// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicApplication.h"
#include "music/PlayerSound.h"

#include <mutex>
#include <optional>

namespace tunedeck {

/// Music, together with its streams on the sound server. The server knows the outputs. It also has a volume for a
/// player that has none, or that reports one and keeps it, such as Chromium. The two volumes are never set both: in
/// most players they are the same one, and in mpv they multiply.
///
/// The streams of a player that keeps its volume are turned until it quits. While it has none, it is believed to keep
/// its volume until that changes. A player that once had a volume keeps it, even while it reports none, as VLC does
/// while it is stopped. A muted player is no longer muted once its volume is turned up.
class MusicWithSound : public MusicApplication {
    Q_OBJECT

public:
    /// `music` says which player `sound` is about. Both must outlive this object.
    MusicWithSound(MusicApplication &music, PlayerSound &sound, QObject *parent = nullptr);

    [[nodiscard]] bool isRunning() const override { return m_music.isRunning(); }
    [[nodiscard]] bool isResponding() const override { return m_music.isResponding(); }
    [[nodiscard]] bool canBeLaunched() const override { return m_music.canBeLaunched(); }
    bool activate() override { return m_music.activate(); }
    void setWatched(bool isWatched) override { m_music.setWatched(isWatched); }

    [[nodiscard]] QString playerName() const override { return m_music.playerName(); }
    [[nodiscard]] std::optional<PlayerProcess> playerProcess() const override { return m_music.playerProcess(); }
    [[nodiscard]] bool canShowPlayer() const override { return m_music.canShowPlayer(); }
    bool showPlayer(const ActivationToken &token) override { return m_music.showPlayer(token); }

    [[nodiscard]] std::optional<FourCharCode> playerState() const override { return m_music.playerState(); }
    [[nodiscard]] std::optional<MusicTrack> currentTrack() const override { return m_music.currentTrack(); }
    [[nodiscard]] std::optional<double> playerPosition() const override { return m_music.playerPosition(); }
    bool setPlayerPosition(double seconds) override { return m_music.setPlayerPosition(seconds); }
    [[nodiscard]] std::optional<int> soundVolume() const override;
    bool setSoundVolume(qint64 volume) override;
    [[nodiscard]] bool isVolumeOfStreams() const override;
    [[nodiscard]] PlayerSound *sound() const override { return &m_sound; }
    [[nodiscard]] std::optional<bool> shuffleEnabled() const override { return m_music.shuffleEnabled(); }
    bool setShuffleEnabled(bool enabled) override { return m_music.setShuffleEnabled(enabled); }
    [[nodiscard]] std::optional<FourCharCode> songRepeat() const override { return m_music.songRepeat(); }
    bool setSongRepeat(FourCharCode repeat) override { return m_music.setSongRepeat(repeat); }
    [[nodiscard]] ControlAnswer answerTo(MusicControl control) const override;

    bool playpause() override { return m_music.playpause(); }
    bool nextTrack() override { return m_music.nextTrack(); }
    bool backTrack() override { return m_music.backTrack(); }
    bool fastForward() override { return m_music.fastForward(); }
    bool rewind() override { return m_music.rewind(); }
    bool resume() override { return m_music.resume(); }

    [[nodiscard]] std::optional<MusicPlaylist> currentPlaylist() const override { return m_music.currentPlaylist(); }
    [[nodiscard]] std::optional<QVariantList> playlistIds() const override { return m_music.playlistIds(); }
    [[nodiscard]] std::optional<QVariantList> playlistNames() const override { return m_music.playlistNames(); }
    [[nodiscard]] PlaylistSource playlistSource() const override { return m_music.playlistSource(); }
    [[nodiscard]] bool hasMorePlaylists() const override { return m_music.hasMorePlaylists(); }
    bool playPlaylist(qint64 id) override { return m_music.playPlaylist(id); }
    /// The outputs that the streams play to. None while the sound server does not answer for the player.
    [[nodiscard]] std::optional<QList<MusicAirPlayDevice>> currentAirPlayDevices() const override;
    void endBackground() override { m_music.endBackground(); }

private:
    /// The volume as the listeners know it.
    struct Volume {
        bool isOfStreams = false;
        std::optional<int> value = {};
        ControlAnswer answer = ControlAnswer::taken;

        bool operator==(const Volume &) const = default;
    };

    void passOn();
    void forgetPlayer();
    /// Learns from what the player shows of its volume.
    void judgeOwnVolume();
    void handleSound();
    [[nodiscard]] Volume volumeNow() const;
    /// Reports what has changed of the volume.
    void reportVolume();
    void unmuteIfTurnedUp(qint64 volume);

    MusicApplication &m_music;
    PlayerSound &m_sound;
    bool m_hasHadOwnVolume = false;
    bool m_keepsOwnVolume = false;
    std::optional<int> m_asked; ///< of the player, as its own volume
    bool m_isUnmuting = false; ///< the server has not answered yet
    Volume m_known;
    PlayerSoundState m_knownSound;

    mutable std::mutex m_mutex;
    std::optional<QList<MusicAirPlayDevice>> m_devices; ///< guarded by the mutex
};

} // namespace tunedeck

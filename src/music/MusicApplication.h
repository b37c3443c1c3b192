// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"
#include "music/PlayerProcess.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>

namespace tunedeck {

class PlayerSound;
struct ActivationToken;

/// A playlist of Music. A field that Music does not answer is none.
struct MusicPlaylist {
    std::optional<qint64> id = {};
    std::optional<QString> name = {};
};

/// An audio output that Music plays to. A field that Music does not answer is none.
struct MusicAirPlayDevice {
    std::optional<FourCharCode> kind = {}; ///< one of AirPlayDeviceKind, or another code
    std::optional<QString> name = {};
};

/// The track that Music plays. A field that Music does not answer is none.
struct MusicTrack {
    std::optional<QString> name = {};
    std::optional<QString> artist = {};
    std::optional<QString> album = {};
    std::optional<QString> genre = {};
    std::optional<double> duration = {}; ///< seconds
};

/// Music: the player on this desktop that the program follows and controls.
///
/// A read returns none if Music does not answer it. A command returns whether Music answers it. While isRunning() is
/// false, reads return none and commands false, except activate(). Nothing here waits for Music. Call it on the main
/// thread only, except for the members under "Background".
class MusicApplication : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isRunning() const = 0;
    /// False while a running Music lets its deadlines pass. Reads then return the last known state, and no command
    /// reaches Music.
    [[nodiscard]] virtual bool isResponding() const { return true; }
    /// Whether activate() may launch Music: not in a sandbox, for example.
    [[nodiscard]] virtual bool canBeLaunched() const { return true; }
    /// Launches Music. Returns false if nothing was launched.
    virtual bool activate() = 0;
    /// Whether the display is visible; at first it is. While it is not, a state that Music does not announce may be
    /// old.
    virtual void setWatched(bool isWatched) = 0;

    /// The player's name for people: plain text of one line and at most 60 characters. Empty while Music does not run.
    [[nodiscard]] virtual QString playerName() const { return {}; }
    /// The process that speaks for the player. None while Music does not run. It may also change with playerInfo().
    [[nodiscard]] virtual std::optional<PlayerProcess> playerProcess() const { return std::nullopt; }
    /// Whether Music answers showPlayer().
    [[nodiscard]] virtual bool canShowPlayer() const { return false; }
    /// Brings the player's own window to the front. The player takes the keyboard focus with `token`, which may be
    /// empty. A player that runs without a window opens one.
    virtual bool showPlayer(const ActivationToken & /*token*/) { return false; }

    /// One of PlayerState, or another code, which counts as playing. Always has a value while Music runs.
    [[nodiscard]] virtual std::optional<FourCharCode> playerState() const = 0;
    [[nodiscard]] virtual std::optional<MusicTrack> currentTrack() const = 0;
    /// Seconds from the start of the track.
    [[nodiscard]] virtual std::optional<double> playerPosition() const = 0;
    virtual bool setPlayerPosition(double seconds) = 0;
    /// 0 to 100.
    [[nodiscard]] virtual std::optional<int> soundVolume() const = 0;
    /// A volume outside 0 to 100 becomes the nearer of the two.
    virtual bool setSoundVolume(qint64 volume) = 0;
    /// Whether the volume is that of Music's streams on the sound server, because Music has none of its own that it
    /// lets others set.
    [[nodiscard]] virtual bool isVolumeOfStreams() const { return false; }
    /// Music's streams on the sound server; null if the program knows no sound server.
    [[nodiscard]] virtual PlayerSound *sound() const { return nullptr; }
    [[nodiscard]] virtual std::optional<bool> shuffleEnabled() const = 0;
    virtual bool setShuffleEnabled(bool enabled) = 0;
    /// One of SongRepeat.
    [[nodiscard]] virtual std::optional<FourCharCode> songRepeat() const = 0;
    virtual bool setSongRepeat(FourCharCode repeat) = 0;
    /// Music's answer to setting `control`, as far as Music has shown it; taken while Music does not run.
    [[nodiscard]] virtual ControlAnswer answerTo(MusicControl /*control*/) const { return ControlAnswer::taken; }

    virtual bool playpause() = 0;
    virtual bool nextTrack() = 0;
    /// Goes to the start of the track, or, near its start, to the previous track.
    virtual bool backTrack() = 0;
    /// Seeks forward until resume().
    virtual bool fastForward() = 0;
    /// Seeks backward until resume().
    virtual bool rewind() = 0;
    /// Ends fastForward() and rewind(); otherwise does nothing.
    virtual bool resume() = 0;

    /// @name Background
    /// These may be called from any thread, and may wait for Music: up to 5 s for the current playlist, the ids and the
    /// names together, and up to 5 s for each of the others.
    /// @{
    [[nodiscard]] virtual std::optional<MusicPlaylist> currentPlaylist() const = 0;
    /// The ids of all playlists, and the names of those whose ids were read last, each as one column. An element may
    /// have the wrong type.
    [[nodiscard]] virtual std::optional<QVariantList> playlistIds() const = 0;
    [[nodiscard]] virtual std::optional<QVariantList> playlistNames() const = 0;
    /// The source of the playlists whose ids were read last.
    [[nodiscard]] virtual PlaylistSource playlistSource() const = 0;
    /// Whether there are more playlists than those whose ids were read last.
    [[nodiscard]] virtual bool hasMorePlaylists() const = 0;
    /// Plays the playlist with this id. If Music does not run, launches it and returns false.
    virtual bool playPlaylist(qint64 id) = 0;
    [[nodiscard]] virtual std::optional<QList<MusicAirPlayDevice>> currentAirPlayDevices() const = 0;
    /// Lets every thread that waits for Music go at once, without an answer. No later call waits.
    virtual void endBackground() = 0;
    /// @}

Q_SIGNALS:
    /// Music announces what it plays. `userInfo` has the keys of UserInfoKey; a stopped Music posts "Player State"
    /// alone.
    void playerInfo(const QVariantMap &userInfo);
    /// Position, volume, shuffle or repeat changed without the track or the state.
    void playbackSettingsDidChange();
    /// answerTo() changed for a control, or isVolumeOfStreams(). A launch or a change of player is announced by
    /// didLaunch() alone.
    void controlsDidChange();
    /// The state of sound() changed in more than the volume.
    void soundDidChange();
    void didLaunch();
    void didTerminate();
    void respondingDidChange(bool isResponding);
    /// playerName() or canShowPlayer() may have changed, also by a launch, a change of player or Music's end.
    void playerDidChange();
};

} // namespace tunedeck

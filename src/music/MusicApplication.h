// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>

namespace tunedeck {

/// A playlist of Music as its scripting interface shows one.
struct MusicPlaylist {
    std::optional<qint64> id = {};
    std::optional<QString> name = {};
};

/// An audio output that Music plays to.
struct MusicAirPlayDevice {
    std::optional<FourCharCode> kind = {}; ///< one of AirPlayDeviceKind, or another code
    std::optional<QString> name = {};
};

/// The track Music plays, field by field as far as Music answers it.
struct MusicTrack {
    std::optional<QString> name = {};
    std::optional<QString> artist = {};
    std::optional<QString> album = {};
    std::optional<QString> genre = {};
    std::optional<double> duration = {}; ///< seconds
};

/// Music: the player on this desktop that the program follows and controls.
///
/// Every read answers a value or, where Music does not answer this member, none. Every command answers whether Music
/// answers it. That is the whole guard: while isRunning() is false, every member but activate() answers nothing.
/// Nothing here waits for Music. Main thread only, but for the members under "Background".
class MusicApplication : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isRunning() const = 0;
    /// False while a running Music lets its deadlines pass: what it plays is then what was last known of it, and no
    /// command reaches it.
    [[nodiscard]] virtual bool isResponding() const { return true; }
    /// Launches Music. False if there is nothing to launch.
    virtual bool activate() = 0;
    /// Whether anyone looks: at first someone does. While nobody does, what Music has not told by itself may be old.
    virtual void setWatched(bool isWatched) = 0;

    /// One of PlayerState, or another code, which counts as playing. Always has a value while Music runs.
    [[nodiscard]] virtual std::optional<FourCharCode> playerState() const = 0;
    [[nodiscard]] virtual std::optional<MusicTrack> currentTrack() const = 0;
    /// Seconds from the start of the track.
    [[nodiscard]] virtual std::optional<double> playerPosition() const = 0;
    virtual bool setPlayerPosition(double seconds) = 0;
    /// 0 to 100.
    [[nodiscard]] virtual std::optional<int> soundVolume() const = 0;
    /// Takes any number; what lies outside 0 to 100 becomes the nearer of the two.
    virtual bool setSoundVolume(qint64 volume) = 0;
    [[nodiscard]] virtual std::optional<bool> shuffleEnabled() const = 0;
    virtual bool setShuffleEnabled(bool enabled) = 0;
    /// One of SongRepeat.
    [[nodiscard]] virtual std::optional<FourCharCode> songRepeat() const = 0;
    virtual bool setSongRepeat(FourCharCode repeat) = 0;

    virtual bool playpause() = 0;
    virtual bool nextTrack() = 0;
    /// To the start of the track, or, near its start, to the track before.
    virtual bool backTrack() = 0;
    /// Seeks forward until resume().
    virtual bool fastForward() = 0;
    /// Seeks backward until resume().
    virtual bool rewind() = 0;
    /// Ends fastForward() and rewind(); otherwise does nothing.
    virtual bool resume() = 0;

    /// @name Background
    /// May be called from any thread, and there may wait for Music: for up to 5 s for the current playlist, the ids and
    /// the names together, and for up to 5 s for each of the others.
    /// @{
    [[nodiscard]] virtual std::optional<MusicPlaylist> currentPlaylist() const = 0;
    /// The ids of all playlists, then the names of those whose ids were read last, each as one column. An element of
    /// the wrong type stays what it is.
    [[nodiscard]] virtual std::optional<QVariantList> playlistIds() const = 0;
    [[nodiscard]] virtual std::optional<QVariantList> playlistNames() const = 0;
    /// Where the playlists come from whose ids were read last.
    [[nodiscard]] virtual PlaylistSource playlistSource() const = 0;
    /// Plays the playlist with this id. Where Music does not run, launches it, and answers false.
    virtual bool playPlaylist(qint64 id) = 0;
    [[nodiscard]] virtual std::optional<QList<MusicAirPlayDevice>> currentAirPlayDevices() const = 0;
    /// Nobody is to wait for Music any more: whoever does goes without an answer, at once.
    virtual void endBackground() = 0;
    /// @}

Q_SIGNALS:
    /// Music says what it plays. `userInfo` has the keys of UserInfoKey; a stopped Music posts "Player State" alone.
    void playerInfo(const QVariantMap &userInfo);
    /// Position, volume, shuffle or repeat changed without the track or the state.
    void playbackSettingsDidChange();
    void didLaunch();
    void didTerminate();
    void respondingDidChange(bool isResponding);
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "Library.h"

#include <QObject>

#include <functional>
#include <random>

namespace tunedeck::demo {

enum class PlaybackStatus { Playing, Paused, Stopped };
enum class LoopStatus { None, Track, Playlist };

/// A music player without sound: its queue, the current track and the position. It knows no bus and starts no timer.
///
/// The owner must call advance() when timeToNextEvent() has passed, and ask for that time again after every signal.
class Player : public QObject {
    Q_OBJECT

public:
    /// A monotonic clock.
    using Clock = std::function<std::chrono::microseconds()>;

    static constexpr double minimumRate = 0.25;
    static constexpr double maximumRate = 4.0;

    /// `seed` decides every order that shuffling gives. The queue is the whole library.
    Player(Clock clock, quint32 seed);

    [[nodiscard]] PlaybackStatus status() const { return m_status; }
    [[nodiscard]] LoopStatus loopStatus() const { return m_loopStatus; }
    [[nodiscard]] bool isShuffled() const { return m_isShuffled; }
    [[nodiscard]] double rate() const { return m_rate; }
    [[nodiscard]] double volume() const { return m_volume; }
    [[nodiscard]] std::chrono::microseconds position() const;
    /// The current track with the changes that setTitle() and setLength() made. None if the queue is empty.
    [[nodiscard]] std::optional<Track> currentTrack() const;
    /// The current track's place in the library, in which opened tracks come last.
    [[nodiscard]] qsizetype currentTrackNumber() const;
    /// Number of tracks in the library, with the opened ones.
    [[nodiscard]] qsizetype trackCount() const { return m_library.size(); }
    [[nodiscard]] bool canGoNext() const;
    [[nodiscard]] bool canGoPrevious() const;
    [[nodiscard]] bool canSeek() const;
    [[nodiscard]] const QList<Playlist> &playlists() const { return m_playlists; }
    [[nodiscard]] std::optional<qsizetype> activePlaylist() const { return m_activePlaylist; }

    void play();
    void pause();
    void playPause();
    void stop();
    void next();
    void previous();
    /// A target before the start is the start; one beyond the end is the next track.
    void seekBy(std::chrono::microseconds offset);
    /// Does nothing if `position` is outside the track.
    void setPosition(std::chrono::microseconds position);
    void open(const QString &url);
    /// Makes a track of the library the current one. Ignores numbers that no track has.
    void goToTrack(qsizetype number);
    void restart();

    void setLoopStatus(LoopStatus status);
    void setShuffled(bool isShuffled);
    /// `rate` is clamped to minimumRate and maximumRate; 0 pauses. This and setVolume() ignore a value that is not a
    /// number.
    void setRate(double rate);
    void setVolume(double volume);
    void setTitle(const QString &title);
    void setLength(std::chrono::microseconds length);
    /// Whether the length of the current track grows with the time it plays, as that of a recorded stream does.
    void setGrowing(bool isGrowing);

    void setPlaylistCount(qsizetype count);
    /// Both ignore numbers that no playlist has.
    void renamePlaylist(qsizetype number, const QString &name);
    void activatePlaylist(qsizetype number);

    /// None if nothing happens by itself.
    [[nodiscard]] std::optional<std::chrono::microseconds> timeToNextEvent() const;
    /// Carries out the events that are due: the end of the track, a live stream's new title, a grown length.
    void advance();

Q_SIGNALS:
    /// Something other than the position changed, within the same track.
    void changed();
    /// Another track plays or is paused, or the same from its start.
    void trackStarted();
    void seeked(std::chrono::microseconds position);
    void playlistRenamed(qsizetype number);

private:
    void setQueue(const QList<qsizetype> &tracks);
    void shuffleFrom(qsizetype first);
    void enter(qsizetype place);
    void announceTrack();
    void moveTo(std::chrono::microseconds position);
    void restartClocks();
    void setStatus(PlaybackStatus status);
    void trackEnded();
    [[nodiscard]] bool isLast() const { return m_place + 1 >= m_order.size(); }

    Clock m_clock;
    std::mt19937 m_random;
    QList<Track> m_library = library();
    QList<Playlist> m_playlists = demo::playlists(namedPlaylistCount);
    std::optional<qsizetype> m_activePlaylist = 0;
    QList<qsizetype> m_queue; ///< places in the library
    QList<qsizetype> m_order; ///< the queue in playing order
    qsizetype m_place = 0; ///< in m_order
    Track m_track;
    qsizetype m_liveTitle = 0;
    bool m_isGrowing = false;

    PlaybackStatus m_status = PlaybackStatus::Stopped;
    LoopStatus m_loopStatus = LoopStatus::None;
    bool m_isShuffled = false;
    double m_rate = 1;
    double m_volume = 0.8;
    std::chrono::microseconds m_position{0}; ///< at m_since
    std::chrono::microseconds m_since{0};
    std::chrono::microseconds m_titleDue{0};
    std::chrono::microseconds m_growthDue{0};
};

} // namespace tunedeck::demo

// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlayerReport.h"
#include "music/mpris/PositionClock.h"
#include "music/mpris/bus/Instant.h"

#include <QVariantMap>

#include <optional>

namespace tunedeck {

/// What one player plays, as far as it can be believed. No D-Bus in here: reports and the time are handed in.
///
/// Real players blink. At every track change many say Stopped or Paused, or send empty and partial metadata, for some
/// milliseconds. So what the user asked for is believed at once; an unasked Stopped or Paused and a track that is not
/// complete only when they have stood for 150 ms; Playing and a complete track at once.
class PlayerMirror {
public:
    /// What an input changed for those who look on.
    struct Changes {
        bool userInfo = false; ///< userInfo() is another
        bool settings = false; ///< position (other than by time), volume, shuffle or loop status
        bool status = false; ///< status() is another
    };
    /// Whether a read may change shuffle and loop status. One player answers a new random value on every read, so
    /// only reads that were made for them may.
    enum class ReadPurpose { Everything, AllButModes };

    /// Has even the first report stand the test of time: a player that has only just come announces a track before it
    /// has read its tags. One that was there before can be believed at once.
    void distrustFirstReport();

    // What the player says

    /// All properties, as read from the player.
    Changes read(const PlayerReport &report, ReadPurpose purpose, Instant now);
    /// The properties that the player announced.
    Changes announced(const PlayerReport &report, Instant now);
    /// Seconds.
    Changes seeked(double position, Instant now);
    /// The position alone, as read from the player. Seconds.
    Changes positionRead(double position, Instant now);

    // What was asked of the player

    /// A status that was asked for. Believed until commandAnswered() and a moment longer.
    Changes askedForStatus(PlaybackStatus status, Instant now);
    void commandAnswered(Instant now);
    Changes commandFailed(Instant now);
    /// Seconds.
    Changes askedForPosition(double target, Instant now);
    /// 0 to 1. The player's own reports of its volume are not looked at until volumeAnswered() and 250 ms longer.
    Changes askedForVolume(double volume, Instant now);
    void volumeAnswered(Instant now);

    // The time

    /// Takes over what has stood long enough.
    Changes settle(Instant now);
    /// When settle() is to be called next, if ever.
    [[nodiscard]] std::optional<Instant> nextSettling() const;
    /// Lets the clock stand while the player does not answer.
    void setResponding(bool responding, Instant now);
    /// The next position the player tells is taken as it is.
    void takeNextSample();

    // What is believed

    /// Stopped also for a player that has nothing to play.
    [[nodiscard]] PlaybackStatus status() const;
    [[nodiscard]] const TrackDetails &track() const;
    /// The keys and values of MusicApplication::playerInfo.
    [[nodiscard]] QVariantMap userInfo() const;
    /// Seconds, 0 to the length of the track. None for a player that has never told a position.
    [[nodiscard]] std::optional<double> position(Instant now) const;
    /// 0 to 1.
    [[nodiscard]] std::optional<double> volume() const;
    [[nodiscard]] std::optional<bool> shuffle() const;
    [[nodiscard]] std::optional<LoopStatus> loopStatus() const;

    [[nodiscard]] bool canControl() const;
    [[nodiscard]] bool canPause() const;
    [[nodiscard]] bool canSeek() const;
    [[nodiscard]] bool canGoNext() const;
    [[nodiscard]] bool canGoPrevious() const;
    /// The track id as last reported: what a seek has to name.
    [[nodiscard]] const QString &reportedTrackId() const;
    /// Whether the player says Stopped and yet has something that may be playing; see positionRead().
    [[nodiscard]] bool mayPlayThoughStopped() const;
    /// Whether the last full read had a position: one player ends when it is asked for a property it does not list.
    [[nodiscard]] bool tellsPosition() const;

private:
    struct Expectation {
        PlaybackStatus status;
        std::optional<Instant> until; ///< none while the command is unanswered
    };
    struct Sighting {
        double position; ///< seconds
        Instant at;
    };
    struct Believed {
        QVariantMap userInfo;
        PlaybackStatus status;
        std::optional<double> volume;
        std::optional<bool> shuffle;
        std::optional<LoopStatus> loopStatus;
    };

    void takeReport(PlayerReport report, Instant now);
    void takePosition(double position, Instant now);
    void judgeMovement(double position, Instant now);
    void setPlaysThoughStopped(bool plays, Instant now);
    [[nodiscard]] bool growsAsItPlays(const TrackDetails &track) const;
    void countGrowth(const TrackDetails &track);
    [[nodiscard]] PlaybackStatus reportedStatus() const;
    [[nodiscard]] bool isBelievableAtOnce(const TrackDetails &track) const;

    void settleStatus(Instant now);
    void settleTrack(Instant now);
    void settleVolume(Instant now);
    void believeStatus(PlaybackStatus status, Instant since);
    void believeTrack(const TrackDetails &track);
    void settleLaterAt(Instant moment);

    [[nodiscard]] Believed believed() const;
    [[nodiscard]] Changes changesSince(const Believed &before) const;

    PlayerReport m_report;
    bool m_believesAtOnce = true;
    Instant m_statusSince{};
    Instant m_trackSince{};
    std::optional<Instant> m_trackDiffersSince;
    int m_growths = 0;
    std::optional<Sighting> m_sightingWhileStopped;
    bool m_playsThoughStopped = false;

    PlaybackStatus m_status = PlaybackStatus::Stopped;
    TrackDetails m_track;
    std::optional<double> m_volume;
    std::optional<Expectation> m_expectation;
    bool m_volumeUnanswered = false;
    std::optional<Instant> m_volumeHeldUntil;

    PositionClock m_clock;
    bool m_targetIsOurs = false;
    bool m_isResponding = true;
    std::optional<Instant> m_nextSettling;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/AskedValue.h"
#include "music/mpris/PlayerModes.h"
#include "music/mpris/PositionClock.h"
#include "music/mpris/TakenControls.h"
#include "music/mpris/bus/Instant.h"
#include "music/mpris/report/PlayerReport.h"

#include <QVariantMap>

#include <array>
#include <optional>

namespace tunedeck {

/// The state of a player, as far as it can be believed. It knows neither D-Bus nor the clock: reports and the time
/// are arguments.
///
/// Players blink. At every track change VLC, Elisa and Chromium say Stopped, Celluloid says Paused, and Chromium sends
/// empty and partial metadata, all for some milliseconds. So a state that the user asked for is believed at once, and
/// so are Playing and a complete track. An unasked Stopped or Paused and an incomplete track are believed after 150 ms,
/// a Stopped that names another track after 500 ms.
class PlayerMirror {
public:
    /// The parts of the believed state that an input changed.
    struct Changes {
        bool userInfo = false; ///< userInfo() differs
        bool settings = false; ///< position (other than by time), volume, shuffle or loop status
        bool status = false; ///< status() differs
        bool controls = false; ///< answerTo() differs for one of them
    };
    /// Lets the first report wait like every other. Call this for a player that has just come: Celluloid announces a
    /// track before it has read its tags. A player that was there before can be believed at once.
    void distrustFirstReport();

    // Reports of the player

    /// All properties, as read from the player.
    Changes read(const PlayerReport &report, Instant now);
    /// The properties that the player announced.
    Changes announced(const PlayerReport &report, Instant now);
    /// The player says that it jumped to `position`, in seconds.
    Changes seeked(double position, Instant now);

    // Commands to the player

    /// The user asked for `status`. It is believed until 250 ms after commandAnswered(), or for 1.25 s without one.
    Changes askedForStatus(PlaybackStatus status, Instant now);
    void commandAnswered(Instant now);
    Changes commandFailed(Instant now);
    /// Seconds.
    Changes askedForPosition(double target, Instant now);
    /// `volume` is 0 to 1. Reports of the volume are ignored until 250 ms after volumeAnswered(). A report of the same
    /// step, such as a rounded one, is no change then.
    void askedForVolume(double volume, Instant now);
    void volumeAnswered(Instant now);
    /// See AskedValue.
    void askedForShuffle(bool enabled, Instant now);
    void shuffleAnswered(Instant now);
    void askedForLoopStatus(LoopStatus status, Instant now);
    void loopStatusAnswered(Instant now);

    // Time

    /// Believes the reports that have lasted long enough.
    Changes settle(Instant now);
    /// The time to call settle() next; none if nothing waits.
    [[nodiscard]] std::optional<Instant> nextSettling() const { return m_nextSettling; }
    /// The clock stops while the player is not responding.
    void setResponding(bool responding, Instant now);
    /// The next reported position moves the clock, however near it is.
    void trustNextSample();

    // The believed state

    /// Stopped also for a player that has nothing to play.
    [[nodiscard]] PlaybackStatus status() const;
    [[nodiscard]] const TrackDetails &track() const { return m_track; }
    /// The keys and values of MusicApplication::playerInfo.
    [[nodiscard]] QVariantMap userInfo() const;
    /// Seconds, 0 to the length of the track; 0 while there is nothing to play. None for a player that has never
    /// reported a position.
    [[nodiscard]] std::optional<double> position(Instant now) const;
    /// 0 to 1.
    [[nodiscard]] std::optional<double> volume() const { return m_volume; }
    /// The volume in the steps in which it is set: 0 to 100.
    [[nodiscard]] std::optional<int> volumeStep() const;
    [[nodiscard]] std::optional<bool> shuffle() const;
    [[nodiscard]] std::optional<LoopStatus> loopStatus() const;

    [[nodiscard]] ControlAnswer answerTo(MusicControl control) const;

    [[nodiscard]] bool canControl() const { return m_report.canControl.value_or(true); }
    [[nodiscard]] bool canPause() const { return m_report.canPause.value_or(true); }
    [[nodiscard]] bool canSeek() const { return canControl() && m_report.canSeek.value_or(true); }
    [[nodiscard]] bool canGoNext() const { return canControl() && m_report.canGoNext.value_or(true); }
    [[nodiscard]] bool canGoPrevious() const { return canControl() && m_report.canGoPrevious.value_or(true); }
    /// The track id last reported, which a seek must name; empty if there is none.
    [[nodiscard]] const QString &reportedTrackId() const;
    /// Whether the player says Stopped and yet has a track that may be playing, as mpv does when it was started idle;
    /// two reads show it.
    [[nodiscard]] bool mayPlayThoughStopped() const;
    /// Whether only a further read can show what to believe.
    [[nodiscard]] bool isInDoubt() const { return m_modes.isInDoubt(); }
    /// Whether only further reads, some time from now, show whether the clock is ahead of the player.
    [[nodiscard]] bool isPositionInDoubt() const { return m_clock.isInDoubt(); }
    /// Whether the player has shown that it announces its seeks: one of ours, or one of its own after which it was
    /// where it had said.
    [[nodiscard]] bool announcesSeeks() const { return m_announcesSeeks; }

private:
    struct Expectation {
        PlaybackStatus status;
        Instant until; ///< the end of the belief, whatever is reported
    };
    struct Sighting {
        double position; ///< seconds
        Instant at;
    };
    struct Believed {
        QVariantMap userInfo;
        PlaybackStatus status;
        std::optional<int> volumeStep;
        std::optional<bool> shuffle;
        std::optional<LoopStatus> loopStatus;
        std::array<ControlAnswer, 4> controls;
    };

    void keepDistinctId(TrackDetails &track) const;
    void applyReport(PlayerReport report, Instant now);
    void applyPosition(double position, Instant now);
    void proveJump(double position, Instant now);
    void judgeMovement(double position, Instant now);
    void setPlaysThoughStopped(bool plays, Instant now);
    [[nodiscard]] bool growsAsItPlays(const TrackDetails &track) const;
    void countGrowth(const TrackDetails &track);
    [[nodiscard]] PlaybackStatus reportedStatus() const;
    [[nodiscard]] bool isBelievableAtOnce(const TrackDetails &track) const;
    [[nodiscard]] bool mayBeLoading() const;
    [[nodiscard]] Milliseconds timeOfDoubt() const;

    void settleStatus(Instant now);
    void settleTrack(Instant now);
    void settleVolume(Instant now);
    void settleModes(Instant now);
    void settleSeekability(Instant now);
    void believeStatus(PlaybackStatus status, Instant since);
    void believeTrack(const TrackDetails &track);
    void settleLaterAt(Instant moment);

    [[nodiscard]] Believed believed() const;
    [[nodiscard]] Changes changesSince(const Believed &before) const;

    PlayerReport m_report;
    PlayerModes m_modes;
    TakenControls m_controls;
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
    AskedValue<bool> m_askedShuffle;
    AskedValue<LoopStatus> m_askedLoopStatus;

    PositionClock m_clock;
    bool m_isSeekable = true;
    std::optional<Instant> m_unseekableSince; ///< as reported
    bool m_targetIsOurs = false;
    bool m_isJumpUnproven = false;
    bool m_announcesSeeks = false;
    bool m_isResponding = true;
    std::optional<Instant> m_nextSettling;
};

} // namespace tunedeck

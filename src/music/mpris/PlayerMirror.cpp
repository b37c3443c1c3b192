// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerMirror.h"

#include "music/mpris/report/userInfoOf.h"

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

constexpr Milliseconds blink{150};
/// Elisa says Stopped for up to 250 ms while it loads the next track, which it names meanwhile.
constexpr Milliseconds longestLoading{500};
/// Limit for a player whose metadata never comes to rest: it must not stay on the old track for good.
constexpr Milliseconds longestUnrest{500};
/// Elisa, Chromium, Celluloid and mpv change their state up to 170 ms after they have answered a command.
constexpr Milliseconds slownessAfterAnswer{250};
/// Limit for a command that is not sent, or not answered, after all.
constexpr Milliseconds longestExpectation{1'250};
constexpr Milliseconds volumeEcho{250};
/// A correction of the position by less is not seen, and not worth reading the volume again, without its fraction.
constexpr double smallestStep = 0.05; // seconds
constexpr double smallestGrowth = 0.2;
constexpr double largestGrowth = 10;
constexpr int growthsOfAStream = 2;
constexpr double movement = 0.1;
/// Two positions closer together in time do not show whether the player moves.
constexpr Milliseconds shortestMovement{200};

} // namespace

void PlayerMirror::distrustFirstReport()
{
    m_believesAtOnce = false;
}

PlayerMirror::Changes PlayerMirror::read(const PlayerReport &report, Instant now)
{
    const Believed before = believed();
    const double expected = m_clock.position(now);
    PlayerReport complete = report;
    complete.track = report.track.value_or(TrackDetails());
    keepDistinctId(*complete.track);
    if (!report.position && report.status == PlaybackStatus::Playing) {
        // Rhythmbox has none for up to 35 ms at a track change.
        complete.position = m_report.position;
    }
    m_modes.read(report);
    m_askedShuffle.read(now);
    m_askedLoopStatus.read(now);
    applyReport(complete, now);
    m_controls.read(report, now);
    if (report.position) {
        applyPosition(*report.position, now);
    }
    Changes changes = changesSince(before);
    changes.settings |= std::abs(m_clock.position(now) - expected) > smallestStep;
    return changes;
}

PlayerMirror::Changes PlayerMirror::announced(const PlayerReport &report, Instant now)
{
    const Believed before = believed();
    if (report.status) {
        setPlaysThoughStopped(false, now);
        m_sightingWhileStopped.reset();
    }
    m_modes.announced(report);
    PlayerReport merged = m_report;
    merge(merged, report);
    applyReport(merged, now);
    m_controls.announced(report, now);
    return changesSince(before);
}

PlayerMirror::Changes PlayerMirror::seeked(double position, Instant now)
{
    // After our own seek the target is believed: cmus announces the place it left, Strawberry a rounded one.
    if (m_targetIsOurs && m_clock.trustsTarget(now)) {
        m_announcesSeeks = true;
        return {};
    }
    m_targetIsOurs = false;
    const bool isJump = m_clock.jump(position, now);
    m_isJumpUnproven |= isJump;
    return {.settings = isJump};
}

PlayerMirror::Changes PlayerMirror::askedForStatus(PlaybackStatus status, Instant now)
{
    const Believed before = believed();
    m_expectation = Expectation{status, now + longestExpectation};
    believeStatus(status, now);
    settle(now);
    return changesSince(before);
}

void PlayerMirror::commandAnswered(Instant now)
{
    if (m_expectation) {
        m_expectation->until = now + slownessAfterAnswer;
        settleLaterAt(m_expectation->until);
    }
}

PlayerMirror::Changes PlayerMirror::commandFailed(Instant now)
{
    m_expectation.reset();
    return settle(now);
}

PlayerMirror::Changes PlayerMirror::askedForPosition(double target, Instant now)
{
    m_targetIsOurs = true;
    m_clock.trustTarget(target, now);
    return {.settings = true};
}

void PlayerMirror::askedForVolume(double volume, Instant now)
{
    if (status() != PlaybackStatus::Stopped) {
        // VLC has no volume while it is stopped, Totem has one of -1.
        m_controls.askedForVolume(volume);
    }
    m_volume = volume;
    m_volumeUnanswered = true;
    m_volumeHeldUntil = now + volumeEcho;
}

void PlayerMirror::volumeAnswered(Instant now)
{
    m_controls.answered(MusicControl::volume, now);
    m_volumeUnanswered = false;
    m_volumeHeldUntil = now + volumeEcho;
    settleLaterAt(*m_volumeHeldUntil);
}

void PlayerMirror::askedForShuffle(bool enabled, Instant now)
{
    m_controls.askedForShuffle(enabled);
    m_modes.askedForShuffle(enabled);
    m_askedShuffle.ask(enabled, now);
    settleLaterAt(m_askedShuffle.until());
}

void PlayerMirror::shuffleAnswered(Instant now)
{
    m_controls.answered(MusicControl::shuffle, now);
    m_askedShuffle.answered(now);
    settleLaterAt(m_askedShuffle.until());
}

void PlayerMirror::askedForLoopStatus(LoopStatus status, Instant now)
{
    m_controls.askedForLoopStatus(status);
    m_askedLoopStatus.ask(status, now);
    settleLaterAt(m_askedLoopStatus.until());
}

void PlayerMirror::loopStatusAnswered(Instant now)
{
    m_controls.answered(MusicControl::repeat, now);
    m_askedLoopStatus.answered(now);
    settleLaterAt(m_askedLoopStatus.until());
}

PlayerMirror::Changes PlayerMirror::settle(Instant now)
{
    const Believed before = believed();
    m_nextSettling.reset();
    settleTrack(now);
    settleStatus(now);
    settleVolume(now);
    settleModes(now);
    settleSeekability(now);
    return changesSince(before);
}

void PlayerMirror::setResponding(bool responding, Instant now)
{
    m_controls.forgetAsked();
    m_isResponding = responding;
    m_clock.setRunning(responding && m_status == PlaybackStatus::Playing, now);
    m_clock.trustNextSample();
}

void PlayerMirror::trustNextSample()
{
    m_clock.trustNextSample();
}

PlaybackStatus PlayerMirror::status() const
{
    return m_track.isEmpty() ? PlaybackStatus::Stopped : m_status;
}

QVariantMap PlayerMirror::userInfo() const
{
    return userInfoOf(m_track, status());
}

std::optional<double> PlayerMirror::position(Instant now) const
{
    if (!m_report.position) {
        return std::nullopt;
    }
    const double position = status() == PlaybackStatus::Stopped ? 0 : m_clock.position(now);
    return m_track.length && !m_track.lengthGrows ? std::min(position, *m_track.length) : position;
}

std::optional<int> PlayerMirror::volumeStep() const
{
    return m_volume ? std::optional(int(std::lround(*m_volume * 100))) : std::nullopt;
}

std::optional<bool> PlayerMirror::shuffle() const
{
    return m_askedShuffle.value() ? m_askedShuffle.value() : m_modes.shuffle();
}

std::optional<LoopStatus> PlayerMirror::loopStatus() const
{
    return m_askedLoopStatus.value() ? m_askedLoopStatus.value() : m_modes.loopStatus();
}

ControlAnswer PlayerMirror::answerTo(MusicControl control) const
{
    if (!canControl()) {
        return ControlAnswer::missing;
    }
    if (control == MusicControl::position) {
        return m_isSeekable ? ControlAnswer::taken : ControlAnswer::missing;
    }
    if (control == MusicControl::shuffle && m_modes.flips()) {
        return ControlAnswer::ignored;
    }
    return m_controls.answer(control);
}

const QString &PlayerMirror::reportedTrackId() const
{
    static const QString none;
    return m_report.track ? m_report.track->trackId : none;
}

bool PlayerMirror::mayPlayThoughStopped() const
{
    return m_report.status.value_or(PlaybackStatus::Stopped) == PlaybackStatus::Stopped && m_report.track
        && !m_report.track->isEmpty() && m_report.position;
}

void PlayerMirror::keepDistinctId(TrackDetails &track) const
{
    // Sayonara sends a new track id at every read. Another track is announced.
    const TrackDetails before = m_report.track.value_or(TrackDetails());
    TrackDetails same = track;
    same.distinctId = before.distinctId;
    if (before.isNameless() && !before.isEmpty() && same.isSameTrack(before)) {
        track.distinctId = before.distinctId;
    }
}

void PlayerMirror::applyReport(PlayerReport report, Instant now)
{
    const PlaybackStatus statusBefore = reportedStatus();
    const TrackDetails trackBefore = m_report.track.value_or(TrackDetails());
    const double rateBefore = m_report.rate.value_or(1);
    if (report.status.value_or(PlaybackStatus::Stopped) != PlaybackStatus::Stopped) {
        m_playsThoughStopped = false;
        m_sightingWhileStopped.reset();
    }
    if (report.track) {
        // VLC reports a length that is some milliseconds off at every read.
        if (report.track->isSameTrack(trackBefore) && report.track->length && trackBefore.length
            && std::abs(*report.track->length - *trackBefore.length) < smallestGrowth) {
            report.track->length = trackBefore.length;
        }
        countGrowth(*report.track);
        report.track->lengthGrows = growsAsItPlays(*report.track);
    }
    m_report = std::move(report);
    if (reportedStatus() != statusBefore) {
        m_statusSince = now;
    }
    if (m_report.track.value_or(TrackDetails()) != trackBefore) {
        m_trackSince = now;
    }
    if (const double rate = m_report.rate.value_or(1); rate != rateBefore) {
        m_clock.setRate(rate, now);
        m_clock.trustNextSample();
    }
    settle(now);
    m_believesAtOnce = false;
}

void PlayerMirror::applyPosition(double position, Instant now)
{
    if (m_report.status.value_or(PlaybackStatus::Stopped) == PlaybackStatus::Stopped) {
        judgeMovement(position, now);
        settle(now);
    }
    // The position of the next track must not move the clock of the one that is still believed. A stopped player's
    // position means nothing, even while its Stopped may yet be a blink.
    const bool isOfThisTrack = m_report.track.value_or(TrackDetails()).isSameTrack(m_track);
    if (isOfThisTrack && status() != PlaybackStatus::Stopped && reportedStatus() != PlaybackStatus::Stopped) {
        m_report.position = position;
        proveJump(position, now);
        m_clock.sample(position, now);
    }
}

void PlayerMirror::proveJump(double position, Instant now)
{
    if (m_isJumpUnproven && !m_clock.trustsTarget(now)) {
        m_isJumpUnproven = false;
        m_announcesSeeks |= m_clock.agreesWith(position, now);
    }
}

void PlayerMirror::judgeMovement(double position, Instant now)
{
    // mpv that was started idle and is then given a file to play still says Stopped. A step back is the start of its
    // next track, and does not show whether it plays.
    const std::optional<Sighting> before = m_sightingWhileStopped;
    if (before && now < before->at + shortestMovement) {
        return;
    }
    m_sightingWhileStopped = Sighting{position, now};
    if (before && position >= before->position) {
        setPlaysThoughStopped(position > before->position + movement, now);
    }
}

void PlayerMirror::setPlaysThoughStopped(bool plays, Instant now)
{
    const PlaybackStatus statusBefore = reportedStatus();
    m_playsThoughStopped = plays;
    if (reportedStatus() != statusBefore) {
        m_statusSince = now;
    }
}

void PlayerMirror::countGrowth(const TrackDetails &track)
{
    const TrackDetails before = m_report.track.value_or(TrackDetails());
    if (track.url != before.url || (track.url.isEmpty() && !track.isSameTrack(before))) {
        m_growths = 0;
        return;
    }
    const double growth = track.length.value_or(0) - before.length.value_or(0);
    if (!before.length || growth < 0 || growth > largestGrowth) {
        m_growths = 0;
    } else if (growth >= smallestGrowth && reportedStatus() == PlaybackStatus::Playing) {
        ++m_growths;
    }
}

bool PlayerMirror::growsAsItPlays(const TrackDetails &track) const
{
    return !track.isLocalFile() && m_growths >= growthsOfAStream;
}

PlaybackStatus PlayerMirror::reportedStatus() const
{
    const PlaybackStatus status = m_report.status.value_or(PlaybackStatus::Stopped);
    return status == PlaybackStatus::Stopped && m_playsThoughStopped ? PlaybackStatus::Playing : status;
}

bool PlayerMirror::isBelievableAtOnce(const TrackDetails &track) const
{
    // Elisa sends the first track of the list, with Stopped, when the list has ended.
    return m_believesAtOnce || (track.isComplete() && reportedStatus() != PlaybackStatus::Stopped);
}

bool PlayerMirror::mayBeLoading() const
{
    return m_status != PlaybackStatus::Stopped && reportedStatus() == PlaybackStatus::Stopped && m_report.track
        && !m_report.track->isNameless() && !m_report.track->isSameTrack(m_track);
}

Milliseconds PlayerMirror::timeOfDoubt() const
{
    return mayBeLoading() ? longestLoading : blink;
}

void PlayerMirror::settleStatus(Instant now)
{
    const PlaybackStatus reported = reportedStatus();
    if (m_expectation && (reported == m_expectation->status || now >= m_expectation->until)) {
        m_expectation.reset();
    }
    if (m_expectation) {
        settleLaterAt(m_expectation->until);
        return;
    }
    if (reported == m_status) {
        return;
    }
    if (m_believesAtOnce || reported == PlaybackStatus::Playing || now >= m_statusSince + timeOfDoubt()) {
        believeStatus(reported, m_statusSince);
    } else {
        settleLaterAt(m_statusSince + timeOfDoubt());
    }
}

void PlayerMirror::settleTrack(Instant now)
{
    const TrackDetails reported = m_report.track.value_or(TrackDetails());
    if (reported == m_track) {
        m_trackDiffersSince.reset();
        return;
    }
    if (!m_trackDiffersSince) {
        m_trackDiffersSince = now;
    }
    const Instant latest = std::min(m_trackSince + timeOfDoubt(), *m_trackDiffersSince + longestUnrest);
    if (isBelievableAtOnce(reported) || now >= latest) {
        m_trackDiffersSince.reset();
        believeTrack(reported);
    } else {
        settleLaterAt(latest);
    }
}

void PlayerMirror::settleVolume(Instant now)
{
    if (m_volumeUnanswered) {
        return;
    }
    if (m_volumeHeldUntil && now < *m_volumeHeldUntil) {
        settleLaterAt(*m_volumeHeldUntil);
        return;
    }
    m_volumeHeldUntil.reset();
    // VLC reports the volume 0 while it is stopped.
    const bool isSilenceOfStopped = m_report.volume == 0.0 && m_volume && reportedStatus() == PlaybackStatus::Stopped;
    if (!isSilenceOfStopped) {
        m_volume = m_report.volume;
    }
}

void PlayerMirror::settleModes(Instant now)
{
    m_askedShuffle.settle(now);
    m_askedLoopStatus.settle(now);
    if (m_askedShuffle.value()) {
        settleLaterAt(m_askedShuffle.until());
    }
    if (m_askedLoopStatus.value()) {
        settleLaterAt(m_askedLoopStatus.until());
    }
}

void PlayerMirror::settleSeekability(Instant now)
{
    const bool isReported = status() == PlaybackStatus::Stopped || (canSeek() && m_report.position && m_track.length);
    if (isReported) {
        m_unseekableSince.reset();
    } else if (!m_unseekableSince) {
        m_unseekableSince = now;
    }
    // VLC and Chromium cannot seek for a moment at a track change.
    if (isReported || m_believesAtOnce || now >= *m_unseekableSince + blink) {
        m_isSeekable = isReported;
    } else if (m_isSeekable) {
        settleLaterAt(*m_unseekableSince + blink);
    }
}

void PlayerMirror::believeStatus(PlaybackStatus status, Instant since)
{
    if (status == m_status) {
        return;
    }
    m_status = status;
    if (status == PlaybackStatus::Stopped) {
        m_controls.forgetAsked(MusicControl::volume);
    }
    m_clock.setRunning(m_isResponding && status == PlaybackStatus::Playing, since);
    if (status == PlaybackStatus::Stopped) {
        m_clock.setPosition(0, since);
    }
    m_clock.trustNextSample();
}

void PlayerMirror::believeTrack(const TrackDetails &track)
{
    const bool isAnother = !track.isSameTrack(m_track);
    m_track = track;
    m_isJumpUnproven &= !isAnother;
    if (isAnother) {
        // VLC loses the volumes that it is sent for a second around a track change.
        m_controls.forgetAsked(MusicControl::volume);
    }
    // Only Audacious, Quod Libet, cmus and Sayonara announce a seek at a track change, so the change itself sets the
    // clock back.
    if (isAnother && !track.isLiveStream()) {
        m_clock.setPosition(0, m_trackSince);
        m_clock.trustNextSample();
    }
}

void PlayerMirror::settleLaterAt(Instant moment)
{
    m_nextSettling = m_nextSettling ? std::min(*m_nextSettling, moment) : moment;
}

PlayerMirror::Believed PlayerMirror::believed() const
{
    return {userInfo(), status(), volumeStep(), shuffle(), loopStatus(),
        {answerTo(MusicControl::position), answerTo(MusicControl::volume), answerTo(MusicControl::shuffle),
            answerTo(MusicControl::repeat)}};
}

PlayerMirror::Changes PlayerMirror::changesSince(const Believed &before) const
{
    const Believed now = believed();
    return {.userInfo = now.userInfo != before.userInfo,
        .settings =
            now.volumeStep != before.volumeStep || now.shuffle != before.shuffle || now.loopStatus != before.loopStatus,
        .status = now.status != before.status,
        .controls = now.controls != before.controls};
}

} // namespace tunedeck

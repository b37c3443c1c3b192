// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerCommands.h"

#include "music/mpris/PlayerCalls.h"
#include "music/mpris/bus/MprisNames.h"

#include <QDBusObjectPath>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

/// Elisa, Chromium, Celluloid and mpv carry a command out up to 170 ms after they have answered it.
constexpr Milliseconds effect{200};
constexpr Milliseconds volumeEffect{300};
constexpr qsizetype maximumWaitingSkips = 8;
constexpr double microsecondsPerSecond = 1e6;

/// The path that a seek must name. Rhythmbox and Strawberry send the track id as a text, Totem sends none.
QDBusObjectPath trackPath(const QString &trackId)
{
    static const QRegularExpression path(QStringLiteral("^(/[A-Za-z0-9_]+)+$"));
    return QDBusObjectPath(path.match(trackId).hasMatch() ? trackId : QStringLiteral("/"));
}

QString loopText(LoopStatus status)
{
    switch (status) {
    case LoopStatus::None:
        return QStringLiteral("None");
    case LoopStatus::Track:
        return QStringLiteral("Track");
    case LoopStatus::Playlist:
        return QStringLiteral("Playlist");
    }
    return {};
}

QString methodOf(PlayerCommands::Command command)
{
    switch (command) {
    case PlayerCommands::Command::PlayPause:
        return QStringLiteral("PlayPause");
    case PlayerCommands::Command::Stop:
        return QStringLiteral("Stop");
    case PlayerCommands::Command::Next:
        return QStringLiteral("Next");
    case PlayerCommands::Command::Previous:
        return QStringLiteral("Previous");
    }
    return {};
}

} // namespace

PlayerCommands::PlayerCommands(PlayerCalls &calls, PlayerMirror &mirror, Clock clock, QObject *parent)
    : QObject(parent)
    , m_calls(calls)
    , m_mirror(mirror)
    , m_clock(std::move(clock))
{
    connect(&m_calls, &PlayerCalls::respondingChanged, this, &PlayerCommands::handleRespondingChanged);
}

bool PlayerCommands::playPause()
{
    if (!areTaken()) {
        return false;
    }
    if (!m_wantedStatus && !isToggling()) {
        m_comingStatus = m_mirror.status();
    }
    const PlaybackStatus wanted = toggled(m_wantedStatus.value_or(m_comingStatus));
    m_wantedStatus = wanted;
    Q_EMIT given();
    QMetaObject::invokeMethod(this, &PlayerCommands::sendPlayPause, Qt::QueuedConnection);
    Q_EMIT mirrorChanged(m_mirror.askedForStatus(wanted, now()));
    return true;
}

bool PlayerCommands::next()
{
    return areTaken() && m_mirror.canGoNext() && skip(Command::Next);
}

bool PlayerCommands::previous()
{
    return areTaken() && m_mirror.canGoPrevious() && skip(Command::Previous);
}

bool PlayerCommands::isSkipping() const
{
    return m_unanswered.testAnyFlags(Command::Next | Command::Previous);
}

bool PlayerCommands::setPosition(double seconds)
{
    if (!areTaken() || !m_mirror.canSeek() || !std::isfinite(seconds)) {
        return false;
    }
    // mpv, VLC and most others skip to the next track beyond the end, Rhythmbox also below 0.
    const double latest = std::max(0.0, m_mirror.track().length.value_or(1e9) - 1);
    const double target = std::clamp(seconds, 0.0, latest);
    Q_EMIT given();
    m_wantedPosition.want(target);
    Q_EMIT mirrorChanged(m_mirror.askedForPosition(target, now()));
    return true;
}

bool PlayerCommands::setVolume(double volume)
{
    if (!areTaken() || !m_mirror.volume()) {
        return false;
    }
    Q_EMIT given();
    m_wantedVolume.want(volume);
    // The user's own volume is no change to be reported back, where its fraction would be lost.
    m_mirror.askedForVolume(volume, now());
    return true;
}

bool PlayerCommands::setShuffle(bool enabled)
{
    if (!areTaken()) {
        return false;
    }
    Q_EMIT given();
    m_mirror.askedForShuffle(enabled, now());
    m_wantedShuffle.want(enabled);
    Q_EMIT mirrorChanged({});
    return true;
}

bool PlayerCommands::setLoopStatus(LoopStatus status)
{
    if (!areTaken()) {
        return false;
    }
    Q_EMIT given();
    m_mirror.askedForLoopStatus(status, now());
    m_wantedLoopStatus.want(status);
    Q_EMIT mirrorChanged({});
    return true;
}

bool PlayerCommands::isToggling() const
{
    return m_unanswered.testAnyFlags(Command::PlayPause | Command::Stop);
}

PlaybackStatus PlayerCommands::toggled(PlaybackStatus status) const
{
    if (status != PlaybackStatus::Playing) {
        return PlaybackStatus::Playing;
    }
    if (m_comingStatus != PlaybackStatus::Playing) {
        return m_comingStatus;
    }
    return m_mirror.canPause() ? PlaybackStatus::Paused : PlaybackStatus::Stopped;
}

void PlayerCommands::sendPlayPause()
{
    if (!m_wantedStatus || isToggling()) {
        return;
    }
    const PlaybackStatus wanted = *std::exchange(m_wantedStatus, std::nullopt);
    // Two leave the player as it is. Sent they would be heard, and need not cancel out.
    if ((wanted == PlaybackStatus::Playing) == (m_comingStatus == PlaybackStatus::Playing)) {
        m_mirror.commandAnswered(now());
        Q_EMIT mirrorChanged({});
        return;
    }
    m_comingStatus = wanted;
    send(wanted == PlaybackStatus::Stopped ? Command::Stop : Command::PlayPause,
        [this](const bus::Answer &answer) { handlePlayPauseAnswer(answer); });
    Q_EMIT mirrorChanged(m_mirror.askedForStatus(wanted, now()));
}

void PlayerCommands::handlePlayPauseAnswer(const bus::Answer &answer)
{
    if (answer.isError()) {
        Q_EMIT mirrorChanged(m_mirror.commandFailed(now()));
        m_comingStatus = m_mirror.status();
    } else {
        m_mirror.commandAnswered(now());
        Q_EMIT mirrorChanged({});
    }
    sendPlayPause();
}

bool PlayerCommands::skip(Command command)
{
    Q_EMIT given();
    if (!isSkipping()) {
        sendSkip(command);
        return true;
    }
    if (m_waitingSkips.size() == maximumWaitingSkips) {
        return false;
    }
    m_waitingSkips.append(command);
    return true;
}

void PlayerCommands::sendSkip(Command command)
{
    send(command, [this](const bus::Answer &) {
        if (!m_waitingSkips.isEmpty()) {
            sendSkip(m_waitingSkips.takeFirst());
        }
    });
}

void PlayerCommands::send(Command command, const bus::AnswerHandler &handler)
{
    m_unanswered.setFlag(command);
    m_calls.ask(mpris::playerInterface, methodOf(command), {}, [this, command, handler](const bus::Answer &answer) {
        m_unanswered.setFlag(command, false);
        handler(answer);
        Q_EMIT effectExpected(effect);
    });
}

void PlayerCommands::sendPosition(double seconds)
{
    Q_EMIT positionSent();
    const QVariant path = QVariant::fromValue(trackPath(m_mirror.reportedTrackId()));
    const QVariant microseconds = qlonglong(std::llround(seconds * microsecondsPerSecond));
    m_calls.ask(mpris::playerInterface, QStringLiteral("SetPosition"), {path, microseconds},
        [this](const bus::Answer &) { m_wantedPosition.answered(); });
}

void PlayerCommands::sendVolume(double volume)
{
    m_calls.setProperty(QStringLiteral("Volume"), volume, [this](const bus::Answer &) {
        if (m_wantedVolume.answered()) {
            return;
        }
        m_mirror.volumeAnswered(now());
        Q_EMIT mirrorChanged({});
        Q_EMIT effectExpected(volumeEffect);
    });
}

void PlayerCommands::sendShuffle(bool enabled)
{
    m_mirror.askedForShuffle(enabled, now());
    m_calls.setProperty(QStringLiteral("Shuffle"), enabled, [this](const bus::Answer &) {
        if (m_wantedShuffle.answered()) {
            return;
        }
        m_mirror.shuffleAnswered(now());
        Q_EMIT mirrorChanged({});
        Q_EMIT effectExpected(effect);
    });
}

void PlayerCommands::sendLoopStatus(LoopStatus status)
{
    m_mirror.askedForLoopStatus(status, now());
    m_calls.setProperty(QStringLiteral("LoopStatus"), loopText(status), [this](const bus::Answer &) {
        if (m_wantedLoopStatus.answered()) {
            return;
        }
        m_mirror.loopStatusAnswered(now());
        Q_EMIT mirrorChanged({});
        Q_EMIT effectExpected(effect);
    });
}

void PlayerCommands::handleRespondingChanged(bool responding)
{
    if (responding) {
        return;
    }
    m_wantedPosition.forget();
    m_wantedVolume.forget();
    m_wantedShuffle.forget();
    m_wantedLoopStatus.forget();
    m_waitingSkips.clear();
    if (std::exchange(m_wantedStatus, std::nullopt)) {
        Q_EMIT mirrorChanged(m_mirror.commandFailed(now()));
    }
}

bool PlayerCommands::areTaken() const
{
    return m_calls.isResponding() && m_mirror.canControl();
}

} // namespace tunedeck

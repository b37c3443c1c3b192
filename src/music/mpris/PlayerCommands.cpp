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

using ReadPurpose = PlayerMirror::ReadPurpose;

/// Elisa, Chromium, Celluloid and mpv carry a command out up to 170 ms after they have answered it.
constexpr Milliseconds effect{200};
constexpr Milliseconds volumeEffect{300};
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

bool PlayerCommands::askForPlayPause()
{
    if (!areTaken() || m_unanswered.testAnyFlags(Command::PlayPause | Command::Stop)) {
        return false;
    }
    const bool isPlaying = m_mirror.status() == PlaybackStatus::Playing;
    m_toggle = isPlaying && !m_mirror.canPause() ? Command::Stop : Command::PlayPause;
    const PlaybackStatus idle = m_toggle == Command::Stop ? PlaybackStatus::Stopped : PlaybackStatus::Paused;
    Q_EMIT mirrorChanged(m_mirror.askedForStatus(isPlaying ? idle : PlaybackStatus::Playing, now()));
    return true;
}

void PlayerCommands::sendPlayPause()
{
    send(m_toggle, [this](const QDBusMessage &reply) {
        if (bus::isError(reply)) {
            Q_EMIT mirrorChanged(m_mirror.commandFailed(now()));
        } else {
            m_mirror.commandAnswered(now());
            Q_EMIT mirrorChanged({});
        }
    });
}

void PlayerCommands::dropPlayPause()
{
    Q_EMIT mirrorChanged(m_mirror.commandFailed(now()));
}

bool PlayerCommands::next()
{
    return areTaken() && m_mirror.canGoNext() && sendOnce(Command::Next);
}

bool PlayerCommands::previous()
{
    return areTaken() && m_mirror.canGoPrevious() && sendOnce(Command::Previous);
}

bool PlayerCommands::setPosition(double seconds)
{
    if (!areTaken() || !m_mirror.canSeek() || !std::isfinite(seconds)) {
        return false;
    }
    // mpv, VLC and most others skip to the next track beyond the end, Rhythmbox also below 0.
    const double latest = std::max(0.0, m_mirror.track().length.value_or(1e9) - 1);
    const double target = std::clamp(seconds, 0.0, latest);
    m_wantedPosition.want(target);
    Q_EMIT mirrorChanged(m_mirror.askedForPosition(target, now()));
    return true;
}

bool PlayerCommands::setVolume(double volume)
{
    if (!areTaken() || !m_mirror.volume()) {
        return false;
    }
    m_wantedVolume.want(volume);
    Q_EMIT mirrorChanged(m_mirror.askedForVolume(volume, now()));
    return true;
}

bool PlayerCommands::setShuffle(bool enabled)
{
    if (!areTaken()) {
        return false;
    }
    m_calls.setProperty(QStringLiteral("Shuffle"), enabled,
        [this](const QDBusMessage &) { Q_EMIT effectExpected(effect, ReadPurpose::Everything); });
    return true;
}

bool PlayerCommands::setLoopStatus(LoopStatus status)
{
    if (!areTaken()) {
        return false;
    }
    m_calls.setProperty(QStringLiteral("LoopStatus"), loopText(status),
        [this](const QDBusMessage &) { Q_EMIT effectExpected(effect, ReadPurpose::Everything); });
    return true;
}

bool PlayerCommands::sendOnce(Command command)
{
    if (m_unanswered.testFlag(command)) {
        return false;
    }
    send(command, [](const QDBusMessage &) {});
    return true;
}

void PlayerCommands::send(Command command, const bus::ReplyHandler &handler)
{
    m_unanswered.setFlag(command);
    m_calls.ask(mpris::playerInterface, methodOf(command), {}, [this, command, handler](const QDBusMessage &reply) {
        m_unanswered.setFlag(command, false);
        handler(reply);
        Q_EMIT effectExpected(effect, ReadPurpose::AllButModes);
    });
}

void PlayerCommands::sendPosition(double seconds)
{
    Q_EMIT positionSent();
    const QVariant path = QVariant::fromValue(trackPath(m_mirror.reportedTrackId()));
    const QVariant microseconds = qlonglong(std::llround(seconds * microsecondsPerSecond));
    m_calls.ask(mpris::playerInterface, QStringLiteral("SetPosition"), {path, microseconds},
        [this](const QDBusMessage &) { m_wantedPosition.answered(); });
}

void PlayerCommands::sendVolume(double volume)
{
    m_calls.setProperty(QStringLiteral("Volume"), volume, [this](const QDBusMessage &) {
        if (!m_calls.isResponding()) {
            m_wantedVolume.forget();
        }
        if (m_wantedVolume.answered()) {
            return;
        }
        m_mirror.volumeAnswered(now());
        Q_EMIT mirrorChanged({});
        Q_EMIT effectExpected(volumeEffect, ReadPurpose::AllButModes);
    });
}

void PlayerCommands::handleRespondingChanged(bool responding)
{
    if (!responding) {
        m_wantedPosition.forget();
    }
}

bool PlayerCommands::areTaken() const
{
    return m_calls.isResponding() && m_mirror.canControl();
}

} // namespace tunedeck

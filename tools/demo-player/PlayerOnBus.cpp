// SPDX-License-Identifier: MIT
#include "PlayerOnBus.h"

#include <chrono>

namespace tunedeck::demo {

namespace {

using std::chrono::milliseconds;

std::chrono::microseconds monotonicTime()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

} // namespace

PlayerOnBus::PlayerOnBus(const QDBusConnection &connection, const QString &name, quint32 seed)
    : m_connection(connection)
    , m_player(monotonicTime, seed)
    , m_busName(connection, name)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_player.advance();
        rearm();
    });
    connect(&m_player, &Player::changed, this, &PlayerOnBus::rearm);
    connect(&m_player, &Player::trackStarted, this, &PlayerOnBus::rearm);
    connect(&m_player, &Player::seeked, this, &PlayerOnBus::rearm);
    connect(&m_object, &MprisObject::quitRequested, this, &PlayerOnBus::quitRequested);
}

std::optional<QString> PlayerOnBus::appear(const Start &start)
{
    m_player.goToTrack(start.track);
    if (start.plays) {
        m_player.play();
    }
    for (const QString &line : start.lines) {
        if (const auto error = m_script.run(line)) {
            return QStringLiteral("%1: %2").arg(line, *error);
        }
    }
    if (!m_connection.registerVirtualObject(QString::fromLatin1(MprisObject::path), &m_object)
        || !(start.replaces ? m_busName.replaceOwner() : m_busName.take())) {
        return QStringLiteral("The bus refuses the name %1").arg(m_busName.name());
    }
    return std::nullopt;
}

void PlayerOnBus::leave()
{
    m_busName.giveUp();
    m_busName.flush();
}

void PlayerOnBus::rearm()
{
    const auto time = m_player.timeToNextEvent();
    if (!time) {
        m_timer.stop();
        return;
    }
    // An hour at most, as a timer cannot hold the longest lengths; advance() does nothing when woken early.
    constexpr milliseconds longest = std::chrono::hours(1);
    m_timer.start(qMin(std::chrono::ceil<milliseconds>(*time), longest));
}

} // namespace tunedeck::demo

// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerCalls.h"

#include "music/mpris/bus/MprisNames.h"
#include "music/mpris/bus/playersLog.h"

#include <QDBusVariant>

namespace tunedeck {

namespace {

/// Stands for an answer of a player that has taken the name over: it is not about this player.
bus::Answer strangersAnswer()
{
    return {.error = QDBusError::ServiceUnknown, .errorName = QDBusError::errorString(QDBusError::ServiceUnknown)};
}

} // namespace

PlayerCalls::PlayerCalls(const QDBusConnection &bus, const QString &owner, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_owner(owner)
    , m_destination(owner)
{
}

void PlayerCalls::ask(const QString &interface, const QString &method, const QVariantList &arguments,
    const bus::AnswerHandler &handler, Milliseconds patience)
{
    const auto judgeAndHandle = [this, method, handler, patience, sentIn = m_silences](const bus::Answer &answer) {
        if (answer.isUnanswered()) {
            qCDebug(playersLog).noquote()
                << m_owner << "did not answer" << method << "within" << patience.count() << "ms";
            // A call that was on its way during a silence that has ended says nothing of the time since then.
            if (sentIn == m_silences) {
                setResponding(false);
            }
        } else if (answer.sender == m_owner) {
            // Otherwise the bus answers for a player that is gone.
            setResponding(true);
        }
        handler(isFromStranger(answer) ? strangersAnswer() : answer);
    };
    bus::send(m_bus, bus::playerCall(m_destination, interface, method, arguments), this, judgeAndHandle, patience);
}

void PlayerCalls::getAll(const QString &interface, const bus::AnswerHandler &handler, Milliseconds patience)
{
    ask(mpris::propertiesInterface, QStringLiteral("GetAll"), {interface}, handler, patience);
}

void PlayerCalls::setProperty(const QString &property, const QVariant &value, const bus::AnswerHandler &handler)
{
    ask(mpris::propertiesInterface, QStringLiteral("Set"),
        {mpris::playerInterface, property, QVariant::fromValue(QDBusVariant(value))}, handler);
}

void PlayerCalls::noteSignOfLife()
{
    setResponding(true);
}

bool PlayerCalls::isFromStranger(const bus::Answer &answer) const
{
    return !answer.isError() && answer.sender != m_owner;
}

void PlayerCalls::setResponding(bool responding)
{
    if (m_isResponding != responding) {
        m_isResponding = responding;
        m_silences += responding ? 1 : 0;
        Q_EMIT respondingChanged(responding);
    }
}

} // namespace tunedeck

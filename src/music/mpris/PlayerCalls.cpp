// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerCalls.h"

#include "music/mpris/bus/MprisNames.h"
#include "music/mpris/bus/playersLog.h"

#include <QDBusVariant>

namespace tunedeck {

namespace {

/// Stands for the answer of another that has taken the name: it is not about this player.
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
    m_nameWatcher.setConnection(bus);
    m_nameWatcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&m_nameWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &newOwner) { noteNameOwner(newOwner); });
}

void PlayerCalls::addressByName(const QString &busName)
{
    m_destination = busName.isEmpty() ? m_owner : busName;
    m_isNameTaken = false;
    m_nameWatcher.setWatchedServices(busName.isEmpty() ? QStringList() : QStringList{busName});
}

void PlayerCalls::ask(const QString &interface, const QString &method, const QVariantList &arguments,
    const bus::AnswerHandler &handler, Milliseconds patience)
{
    const auto judgeAndHandle = [this, method, handler, patience, sentIn = m_silences, wasNameTaken = m_isNameTaken,
                                    takeovers = m_takeovers](const bus::Answer &answer) {
        // The bus reports that the name changes hands before any answer of its new owner.
        if (wasNameTaken || takeovers != m_takeovers) {
            handler(strangersAnswer());
            return;
        }
        if (answer.isUnanswered()) {
            qCDebug(playersLog).noquote()
                << m_owner << "did not answer" << method << "within" << patience.count() << "ms";
            // A call that was on its way during a silence that has ended says nothing of the time since then.
            if (sentIn == m_silences) {
                setResponding(false);
            }
        } else if (!answer.isUndelivered()) {
            setResponding(true);
        }
        handler(answer);
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

void PlayerCalls::noteNameOwner(const QString &owner)
{
    m_isNameTaken = !owner.isEmpty() && owner != m_owner;
    m_takeovers += m_isNameTaken ? 1 : 0;
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

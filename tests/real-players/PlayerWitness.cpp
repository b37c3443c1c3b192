// SPDX-License-Identifier: MIT
#include "PlayerWitness.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

namespace tunedeck {

namespace {

const QString namePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
constexpr int deadline = 1'000; // milliseconds

} // namespace

PlayerWitness::PlayerWitness()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("witness")))
{
    m_bus.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), this,
        SLOT(nameOwnerChanged(QString, QString, QString)));
}

bool PlayerWitness::findPlayer()
{
    const QStringList names = m_bus.interface()->registeredServiceNames().value().filter(namePrefix);
    m_names = {names.begin(), names.end()};
    m_player = names.value(0);
    return !names.isEmpty();
}

QString PlayerWitness::status() const
{
    return property(QStringLiteral("PlaybackStatus")).toString();
}

double PlayerWitness::position() const
{
    constexpr double microsecondsPerSecond = 1e6;
    const QVariant position = property(QStringLiteral("Position"));
    return position.isValid() ? position.toDouble() / microsecondsPerSecond : -1;
}

double PlayerWitness::volume() const
{
    const QVariant volume = property(QStringLiteral("Volume"));
    return volume.isValid() ? volume.toDouble() : -1;
}

void PlayerWitness::quitPlayer() const
{
    m_bus.send(QDBusMessage::createMethodCall(
        m_player, objectPath, QStringLiteral("org.mpris.MediaPlayer2"), QStringLiteral("Quit")));
}

bool PlayerWitness::isGone() const
{
    return m_names.isEmpty();
}

void PlayerWitness::nameOwnerChanged(const QString &name, const QString &, const QString &newOwner)
{
    if (newOwner.isEmpty()) {
        m_names.remove(name);
    }
}

QVariant PlayerWitness::property(const QString &name) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_player, objectPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message.setArguments({QStringLiteral("org.mpris.MediaPlayer2.Player"), name});
    return qvariant_cast<QDBusVariant>(m_bus.call(message, QDBus::Block, deadline).arguments().value(0)).variant();
}

} // namespace tunedeck

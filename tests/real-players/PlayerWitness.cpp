// SPDX-License-Identifier: MIT
#include "PlayerWitness.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTest>
#include <QUrl>

#include <csignal>

namespace tunedeck {

namespace {

const QString namePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
constexpr int deadline = 1'000; // milliseconds
constexpr int quiet = 700; // milliseconds
constexpr int longestReports = 5'000; // milliseconds

} // namespace

PlayerWitness::PlayerWitness()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("witness")))
{
    m_bus.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), this,
        SLOT(nameOwnerChanged(QString, QString, QString)));
    // Any player's: all of them must be quiet.
    m_bus.connect(QString(), objectPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"), this, SLOT(playerReported()));
    m_bus.connect(QString(), objectPath, playerInterface, QStringLiteral("Seeked"), this, SLOT(playerReported()));
}

bool PlayerWitness::findPlayer(const QString &name)
{
    const QStringList names = m_bus.interface()->registeredServiceNames().value().filter(namePrefix + name);
    m_names = {names.begin(), names.end()};
    m_player = names.value(0);
    return !names.isEmpty();
}

QString PlayerWitness::status() const
{
    return property(playerInterface, QStringLiteral("PlaybackStatus")).toString();
}

QString PlayerWitness::title() const
{
    const QVariant metadata = property(playerInterface, QStringLiteral("Metadata"));
    return qdbus_cast<QVariantMap>(metadata).value(QStringLiteral("xesam:title")).toString();
}

double PlayerWitness::position() const
{
    constexpr double microsecondsPerSecond = 1e6;
    const QVariant position = property(playerInterface, QStringLiteral("Position"));
    return position.isValid() ? position.toDouble() / microsecondsPerSecond : -1;
}

double PlayerWitness::volume() const
{
    const QVariant volume = property(playerInterface, QStringLiteral("Volume"));
    return volume.isValid() ? volume.toDouble() : -1;
}

int PlayerWitness::playlistCount() const
{
    const QVariant count =
        property(QStringLiteral("org.mpris.MediaPlayer2.Playlists"), QStringLiteral("PlaylistCount"));
    return count.isValid() ? count.toInt() : -1;
}

void PlayerWitness::awaitQuiet()
{
    m_sinceReport.start();
    (void)QTest::qWaitFor([this] { return m_sinceReport.elapsed() >= quiet; }, longestReports);
}

void PlayerWitness::setVolume(double volume) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_player, objectPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    message.setArguments({playerInterface, QStringLiteral("Volume"), QVariant::fromValue(QDBusVariant(volume))});
    m_bus.send(message);
}

void PlayerWitness::playPause() const
{
    m_bus.send(QDBusMessage::createMethodCall(m_player, objectPath, playerInterface, QStringLiteral("PlayPause")));
}

void PlayerWitness::openFile(const QString &path) const
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(m_player, objectPath, playerInterface, QStringLiteral("OpenUri"));
    message.setArguments({QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)});
    m_bus.send(message);
}

void PlayerWitness::quitPlayer() const
{
    m_bus.send(QDBusMessage::createMethodCall(
        m_player, objectPath, QStringLiteral("org.mpris.MediaPlayer2"), QStringLiteral("Quit")));
}

void PlayerWitness::closePlayer() const
{
    ::kill(pid_t(m_bus.interface()->servicePid(m_player).value()), SIGTERM);
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

QVariant PlayerWitness::property(const QString &interface, const QString &name) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_player, objectPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message.setArguments({interface, name});
    return qvariant_cast<QDBusVariant>(m_bus.call(message, QDBus::Block, deadline).arguments().value(0)).variant();
}

} // namespace tunedeck

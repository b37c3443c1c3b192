// SPDX-License-Identifier: MIT
#include "music/mpris/desktop/PlayerWindow.h"

#include "music/mpris/bus/BusCall.h"
#include "music/mpris/bus/BusValue.h"
#include "music/mpris/bus/MprisNames.h"
#include "platform/ActivationToken.h"
#include "platform/DesktopEntries.h"

#include <QRegularExpression>

namespace tunedeck {

namespace {

/// A name may move between owners many times a second.
constexpr Milliseconds burst{50};

/// The name on the bus of an application with this desktop entry; empty if the entry cannot be such a name.
QString busNameOf(const QString &desktopEntry)
{
    static const QRegularExpression name(
        QStringLiteral(R"(\A[A-Za-z_-][A-Za-z0-9_-]*(\.[A-Za-z_-][A-Za-z0-9_-]*)+\z)"));
    constexpr qsizetype longest = 255;
    return desktopEntry.size() <= longest && name.match(desktopEntry).hasMatch() ? desktopEntry : QString();
}

/// The path of the application's object.
QString pathOf(const QString &busName)
{
    return u'/' + QString(busName).replace(u'.', u'/').replace(u'-', u'_');
}

QDBusMessage activateCall(const QString &owner, const QString &busName, const ActivationToken &token)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        owner, pathOf(busName), QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setAutoStartService(false);
    call << token.platformData();
    return call;
}

} // namespace

PlayerWindow::PlayerWindow(const QDBusConnection &bus, DesktopEntries &entries, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_entries(entries)
{
    m_watcher.setConnection(bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_search.setSingleShot(true);
    m_search.setInterval(burst);
    connect(&m_search, &QTimer::timeout, this, &PlayerWindow::findApplication);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] {
        if (!m_search.isActive()) {
            m_search.start();
        }
    });
    connect(&m_entries, &DesktopEntries::factsKnown, this, &PlayerWindow::handleFacts);
}

void PlayerWindow::setBus(const QDBusConnection &bus)
{
    setPlayer(std::nullopt);
    m_bus = bus;
    m_watcher.setConnection(bus);
}

void PlayerWindow::setPlayer(const std::optional<Player> &player)
{
    if (player == m_player) {
        return;
    }
    m_player = player;
    m_application.clear();
    m_search.stop();
    m_watcher.setWatchedServices({});
    if (player && !busNameOf(player->desktopEntry).isEmpty()) {
        handleFacts(player->desktopEntry);
    }
}

bool PlayerWindow::canBeShown() const
{
    return m_player && (m_player->canRaise || !m_application.isEmpty());
}

bool PlayerWindow::show(const ActivationToken &token)
{
    if (!canBeShown()) {
        return false;
    }
    if (m_application.isEmpty()) {
        raise();
    } else {
        activate(token);
    }
    return true;
}

void PlayerWindow::handleFacts(const QString &desktopEntry)
{
    if (!m_player || desktopEntry != m_player->desktopEntry) {
        return;
    }
    const std::optional<DesktopEntryFacts> facts = m_entries.facts(desktopEntry);
    if (facts && facts->isDBusActivatable && m_watcher.watchedServices().isEmpty()) {
        // Watched first and asked second, so that no change in between is missed.
        m_watcher.setWatchedServices({desktopEntry});
        findApplication();
    }
}

void PlayerWindow::findApplication()
{
    const auto handleOwner = [this, player = m_player](const bus::Answer &answer) {
        if (player != m_player) {
            return;
        }
        const QString owner = answer.argument(0).toString();
        if (answer.isError() || owner == m_player->owner) {
            setApplication(owner);
        } else {
            compareProcess(owner);
        }
    };
    bus::send(m_bus, bus::daemonCall(QStringLiteral("GetNameOwner"), {m_player->desktopEntry}), this, handleOwner);
}

/// Any program may own the name that the player says is its own.
void PlayerWindow::compareProcess(const QString &owner)
{
    const auto handleProcess = [this, player = m_player, owner](const bus::Answer &answer) {
        if (player == m_player) {
            const bool isSame = !answer.isError() && m_player->processId == answer.argument(0).toLongLong();
            setApplication(isSame ? owner : QString());
        }
    };
    bus::send(m_bus, bus::daemonCall(QStringLiteral("GetConnectionUnixProcessID"), {owner}), this, handleProcess);
}

void PlayerWindow::setApplication(const QString &owner)
{
    if (m_application != owner) {
        m_application = owner;
        Q_EMIT changed();
    }
}

/// Totem answers and shows nothing, but can be raised. A window that has come already is not changed by that.
void PlayerWindow::activate(const ActivationToken &token)
{
    const auto handleAnswer = [this, player = m_player](const bus::Answer &answer) {
        if (!answer.isUnanswered() && player == m_player && m_player->canRaise) {
            raise();
        }
    };
    bus::send(m_bus, activateCall(m_application, m_player->desktopEntry, token), this, handleAnswer);
}

void PlayerWindow::raise()
{
    const QDBusMessage call = bus::playerCall(m_player->destination, mpris::rootInterface, QStringLiteral("Raise"));
    bus::send(m_bus, call, this, [](const bus::Answer &) { });
}

} // namespace tunedeck

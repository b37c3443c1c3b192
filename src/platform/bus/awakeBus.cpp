// SPDX-License-Identifier: MIT
#include "platform/bus/awakeBus.h"

#include "platform/bus/busGreeting.h"

#include <QFile>

#include <atomic>
#include <chrono>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto greetingPatience = 2s;

/// The address of the session's bus; empty if libdbus has to find out.
QString usualAddress()
{
    const QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    // libdbus looks up the default address once per process, and keeps the result even if it found nothing.
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return given.isEmpty() && QFile::exists(usual) ? QStringLiteral("unix:path=") + usual : given;
}
} // namespace

QDBusConnection connectToBusAt(const QString &address)
{
    static std::atomic<int> connections = 0;
    const QString name = QStringLiteral("session bus %1").arg(++connections);
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                             : QDBusConnection::connectToBus(address, name);
}

std::optional<QDBusConnection> connectIfAwake(const QString &address)
{
    const QString found = address.isEmpty() ? usualAddress() : address;
    const std::optional<QString> greeting = addressThatGreets(found, greetingPatience);
    // Qt would connect to the first address of a list, and wait for it.
    return greeting ? std::optional(connectToBusAt(*greeting)) : std::nullopt;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "platform/bus/BusProbe.h"

#include "platform/bus/readingThread.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QString>

#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto firstPatience = 1s;
constexpr auto secondPatience = 3s;
} // namespace

void BusProbe::ask(const QDBusConnection &connection)
{
    if (!std::exchange(m_isAsking, true)) {
        m_hasReadAgain = false;
        send(connection, firstPatience);
    }
}

void BusProbe::send(const QDBusConnection &connection, std::chrono::milliseconds patience)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage question =
        QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetId"));
    auto *watcher = new QDBusPendingCallWatcher(connection.asyncCall(question, int(patience.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, connection] {
        watcher->deleteLater();
        m_isAsking = false;
        if (watcher->isError() && watcher->error().type() == QDBusError::NoReply) {
            handleSilence(connection);
        }
    });
}

void BusProbe::handleSilence(const QDBusConnection &connection)
{
    if (m_hasReadAgain) {
        Q_EMIT deaf(connection.name());
        return;
    }
    m_isAsking = true;
    m_hasReadAgain = true;
    readAgain(connection);
    send(connection, secondPatience);
}

} // namespace tunedeck

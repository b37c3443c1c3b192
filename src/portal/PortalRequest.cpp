// SPDX-License-Identifier: MIT
#include "portal/PortalRequest.h"

#include "platform/bus/readingThread.h"
#include "platform/windowLog.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QRandomGenerator>

#include <utility>

namespace tunedeck {

namespace {
/// For the call itself, in milliseconds.
constexpr int deadline = 10'000;

PortalAnswer answerOf(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownObject:
        return PortalAnswer::Missing;
    default:
        // A portal may refuse a program without an identifier.
        return answerWithoutPortal(error).value_or(PortalAnswer::Declined);
    }
}
} // namespace

PortalRequest::PortalRequest(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    m_patience.setObjectName(QStringLiteral("patience"));
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] { finish(PortalAnswer::Failed); });
}

QString PortalRequest::newToken()
{
    return QStringLiteral("tunedeck_%1").arg(QRandomGenerator::system()->generate64(), 0, 16);
}

QString PortalRequest::pathOf(const QDBusConnection &bus, const QString &kind, const QString &token)
{
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return QStringLiteral("/org/freedesktop/portal/desktop/%1/%2/%3").arg(kind, sender, token);
}

void PortalRequest::send(QDBusMessage call, QVariantMap options, std::optional<std::chrono::milliseconds> patience)
{
    const QString token = newToken();
    options.insert(QStringLiteral("handle_token"), token);
    call << options;
    // The answer may come before that of the call.
    listen(pathOf(m_bus, QStringLiteral("request"), token));
    if (patience) {
        m_patience.start(*patience);
    }
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, deadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        releaseWhereRead(m_bus, watcher->reply());
        if (watcher->isError()) {
            qCDebug(windowLog) << "the portal refuses a request:" << watcher->error().name();
            finish(answerOf(watcher->error()));
        }
    });
}

/// The path is a secret between the program and the portal, so no sender has to be checked.
void PortalRequest::listen(const QString &path)
{
    const IncomingSignal::Origin origin{
        {}, path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response")};
    m_response = std::make_unique<IncomingSignal>(m_bus, origin, QStringLiteral("ua{sv}"));
    connect(m_response.get(), &IncomingSignal::came, this, &PortalRequest::handleResponse);
}

void PortalRequest::handleResponse(const QString &portal, const QVariantList &values)
{
    constexpr uint granted = 0;
    if (values.isEmpty()) {
        finish(PortalAnswer::Failed);
    } else if (values.at(0).toUInt() == granted) {
        finish(PortalAnswer::Granted, values.at(1).toMap(), portal);
    } else {
        finish(PortalAnswer::Declined);
    }
}

void PortalRequest::finish(PortalAnswer answer, const QVariantMap &results, const QString &portal)
{
    m_patience.stop();
    if (m_response) {
        m_response->disconnect(this);
        // It may be emitting.
        m_response.release()->deleteLater();
    }
    if (!std::exchange(m_isFinished, true)) {
        Q_EMIT finished(answer, results, portal);
    }
}

} // namespace tunedeck

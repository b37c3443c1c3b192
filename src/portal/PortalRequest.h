// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/IncomingSignal.h"
#include "portal/PortalAnswer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>
#include <memory>
#include <optional>

namespace tunedeck {

/// One request to a portal. The portal answers the call at once, and the request itself with a signal later, when the
/// user may have been asked.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    explicit PortalRequest(const QDBusConnection &bus, QObject *parent = nullptr);

    /// A text that no other program can guess, for names of objects on the bus.
    [[nodiscard]] static QString newToken();
    /// The path of an object that the portal makes for this connection.
    [[nodiscard]] static QString pathOf(const QDBusConnection &bus, const QString &kind, const QString &token);

    /// Sends `call`, which has all its arguments but the last, and then `options`, to which a name of the request is
    /// added. Waits `patience` for the signal; no value: as long as the user takes. Emits finished() once.
    void send(QDBusMessage call, QVariantMap options, std::optional<std::chrono::milliseconds> patience);

Q_SIGNALS:
    /// `results` is empty unless the answer is Granted. `portal` is the unique name of the portal.
    void finished(tunedeck::PortalAnswer answer, const QVariantMap &results, const QString &portal);

private:
    void listen(const QString &path);
    void handleResponse(const QString &portal, const QVariantList &values);
    void finish(PortalAnswer answer, const QVariantMap &results = {}, const QString &portal = {});

    QDBusConnection m_bus;
    std::unique_ptr<IncomingSignal> m_response;
    bool m_isFinished = false;
    QTimer m_patience{this};
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/BusProbe.h"
#include "portal/PortalAnswer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

namespace tunedeck {

/// A connection to the session bus on which the program speaks to the desktop's portal alone, and under its own
/// identifier. A portal takes the identifier only before any other call on the connection, so this is not the
/// connection that the rest of the program uses.
class PortalConnection : public QObject {
    Q_OBJECT

public:
    static constexpr QLatin1String service{"org.freedesktop.portal.Desktop"};
    static constexpr QLatin1String objectPath{"/org/freedesktop/portal/desktop"};

    /// The session bus at `address`; the usual one if that is empty.
    explicit PortalConnection(QString address, QObject *parent = nullptr);
    /// Ends the connection, and with it whatever the portal keeps for it.
    ~PortalConnection() override;

    /// Connects on a thread if the bus is awake, then tells the portal the program's identifier. Then emits opened() or
    /// failed().
    void open();

    /// Whether the portal has been told the program's identifier. Older portals cannot be told it, others take it only
    /// if the program's desktop entry is installed, and none takes it from a program in a sandbox, which it knows.
    [[nodiscard]] bool isIdentified() const { return m_isIdentified; }
    /// The requests that are children of this object say nothing more to `receiver`.
    void silenceRequestsFor(const QObject *receiver) const;
    /// Ends `connection` later, if there is one. Until then neither it nor its requests say anything to `receiver`,
    /// which may be handling a signal of one of them.
    static void letGo(std::unique_ptr<PortalConnection> connection, const QObject *receiver);
    /// Not connected before opened().
    [[nodiscard]] QDBusConnection bus() const;
    /// A call of a method of a portal.
    [[nodiscard]] static QDBusMessage callTo(const QString &interface, const QString &method);

Q_SIGNALS:
    /// There is a portal. Some serve a program whose identifier they do not know, too.
    void opened();
    /// The portal is Missing, or there is no bus that answers, or no portal: Failed.
    void failed(tunedeck::PortalAnswer answer);
    /// The portal has ended after opened(), and with it whatever it kept for this connection.
    void lost();
    /// There is a portal again after lost(). It knows nothing of this connection.
    void back();

private:
    void handleConnected(const std::optional<QDBusConnection> &connection);
    void watchPortal();
    void handleOwner(const QString &formerOwner, const QString &owner);
    void registerProgram();

    const QString m_address;
    std::optional<QDBusConnection> m_connection;
    BusProbe m_probe{this};
    QTimer m_checkSoon{this};
    bool m_asksAgain = false; ///< the owner has changed while the probe was asking
    bool m_isIdentified = false;
    bool m_isOpened = false;
    bool m_isLost = false;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace tunedeck {

class PrivateBus;

/// A desktop's portal that does what the test says.
class ScriptedPortal : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// How a request is answered.
    enum class Way {
        Grant,
        Decline,
        Silent, ///< the call is answered, the request is not
        Deaf, ///< not even the call is answered
        Unknown, ///< there is no such method
        Refuse, ///< "An app id is required"
        CannotStart, ///< the bus answers that its program does not run
        WrongType,
        WrongResult,
        Huge, ///< with 100,000 results
    };

    /// 100,000 options of a signal, or results of a request.
    [[nodiscard]] static QVariantMap hugeMap();

    /// A new connection for a program on `bus`. A name that was used before would mean the connection of an earlier
    /// test.
    [[nodiscard]] static QDBusConnection connectTo(const PrivateBus &bus);

    /// Owns the portal's name on `bus`.
    explicit ScriptedPortal(const QDBusConnection &bus);
    ~ScriptedPortal() override;

    Way registration = Way::Grant;
    Way session = Way::Grant;
    Way bind = Way::Grant;
    Way background = Way::Grant;

    /// The methods that were called, in order; Register with the identifier.
    [[nodiscard]] QStringList calls() const { return m_calls; }
    /// The ids that were bound, and the options of the last RequestBackground.
    [[nodiscard]] QStringList boundIds() const { return m_boundIds; }
    [[nodiscard]] QVariantMap backgroundOptions() const { return m_backgroundOptions; }
    [[nodiscard]] QString sessionPath() const { return m_session; }
    /// Whether all calls came on the connection that was registered.
    [[nodiscard]] bool isOneCaller() const { return m_callers.size() <= 1; }

    /// The user presses a shortcut. Sent on `bus`, which another program may own.
    static void press(
        const QDBusConnection &bus, const QString &session, const QString &id, const QVariantMap &options);
    void closeSession();
    /// Answers the request that was left without an answer.
    void answerLate();

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    [[nodiscard]] QString introspect(const QString &path) const override;

private:
    void answer(const QDBusMessage &call, Way way, const QVariantMap &options, const QVariantMap &results);
    void respond(const QString &path, const QVariantList &arguments);
    void bindShortcuts(const QDBusMessage &call);

    QDBusConnection m_bus;
    QStringList m_calls;
    QStringList m_callers;
    QStringList m_boundIds;
    QVariantMap m_backgroundOptions;
    QString m_session;
    QString m_unanswered;
};

} // namespace tunedeck

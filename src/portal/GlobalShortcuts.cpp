// SPDX-License-Identifier: MIT
#include "portal/GlobalShortcuts.h"

#include "platform/bus/IncomingSignal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QVariantMap>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tunedeck {

/// A shortcut as the portal wants it.
struct OfferedShortcut {
    QString id;
    QVariantMap details;
};

// Qt finds these two by their names.
QDBusArgument &operator<<(QDBusArgument &argument, const OfferedShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.details;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, OfferedShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.details;
    argument.endStructure();
    return argument;
}

namespace {
using namespace std::chrono_literals;

/// For what the portal does by itself.
constexpr auto patience = 10s;

QString shortcutsInterface()
{
    return QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
}

QString sessionInterface()
{
    return QStringLiteral("org.freedesktop.portal.Session");
}

GlobalShortcuts::State stateAfter(PortalAnswer answer)
{
    switch (answer) {
    case PortalAnswer::Granted:
        return GlobalShortcuts::State::On;
    case PortalAnswer::Declined:
        return GlobalShortcuts::State::Declined;
    case PortalAnswer::Missing:
        return GlobalShortcuts::State::Missing;
    case PortalAnswer::Failed:
        break;
    }
    return GlobalShortcuts::State::Failed;
}
} // namespace

GlobalShortcuts::GlobalShortcuts(QList<Shortcut> shortcuts, QString address, QObject *parent)
    : QObject(parent)
    , m_shortcuts(std::move(shortcuts))
    , m_address(std::move(address))
{
    qDBusRegisterMetaType<OfferedShortcut>();
    qDBusRegisterMetaType<QList<OfferedShortcut>>();
}

GlobalShortcuts::~GlobalShortcuts() = default;

void GlobalShortcuts::setWanted(bool isWanted)
{
    if (!isWanted) {
        letGo();
        setState(State::Off);
    } else if (m_state != State::Asking && m_state != State::On) {
        m_returns = 0;
        ask();
    }
}

/// A portal that ends whenever it is asked must not be asked for ever.
void GlobalShortcuts::askAgain()
{
    if (m_returns < mostReturns) {
        ++m_returns;
        ask();
    }
}

void GlobalShortcuts::ask()
{
    letGo();
    setState(State::Asking);
    m_portal = std::make_unique<PortalConnection>(m_address, this);
    connect(m_portal.get(), &PortalConnection::opened, this, &GlobalShortcuts::createSession);
    connect(m_portal.get(), &PortalConnection::failed, this, &GlobalShortcuts::endWith);
    connect(m_portal.get(), &PortalConnection::lost, this, &GlobalShortcuts::handleLost);
    connect(m_portal.get(), &PortalConnection::back, this, &GlobalShortcuts::askAgain);
    m_portal->open();
}

void GlobalShortcuts::createSession()
{
    const QString token = PortalRequest::newToken();
    m_session = PortalRequest::pathOf(m_portal->bus(), QStringLiteral("session"), token);
    auto *request = new PortalRequest(m_portal->bus(), m_portal.get());
    connect(request, &PortalRequest::finished, this,
        [this](PortalAnswer answer, const QVariantMap &results, const QString &portal) {
            const QString session = results.value(QStringLiteral("session_handle")).toString();
            // Any other session would be another program's.
            if (answer == PortalAnswer::Granted && session == m_session) {
                bind(session, portal);
            } else {
                endWith(answer == PortalAnswer::Granted ? PortalAnswer::Failed : answer);
            }
        });
    request->send(PortalConnection::callTo(shortcutsInterface(), QStringLiteral("CreateSession")),
        {{QStringLiteral("session_handle_token"), token}}, patience);
}

void GlobalShortcuts::bind(const QString &session, const QString &portal)
{
    listen(portal);
    QList<OfferedShortcut> offered;
    for (const Shortcut &shortcut : m_shortcuts) {
        offered.append({shortcut.id, {{QStringLiteral("description"), shortcut.description}}});
    }
    QDBusMessage call = PortalConnection::callTo(shortcutsInterface(), QStringLiteral("BindShortcuts"));
    call << QVariant::fromValue(QDBusObjectPath(session)) << QVariant::fromValue(offered) << QString();
    auto *request = new PortalRequest(m_portal->bus(), m_portal.get());
    connect(request, &PortalRequest::finished, this, [this](PortalAnswer answer) {
        if (answer == PortalAnswer::Granted) {
            setState(State::On);
        } else {
            endWith(answer);
        }
    });
    request->send(call, {}, std::nullopt);
}

/// Only what the portal itself sends is received.
void GlobalShortcuts::listen(const QString &portal)
{
    const auto *pressed = new IncomingSignal(m_portal->bus(),
        {portal, PortalConnection::objectPath, shortcutsInterface(), QStringLiteral("Activated")},
        QStringLiteral("osta{sv}"), m_portal.get());
    connect(pressed, &IncomingSignal::came, this,
        [this](const QString &, const QVariantList &values) { handleActivated(values); });
    const auto *closed = new IncomingSignal(m_portal->bus(),
        {portal, m_session, sessionInterface(), QStringLiteral("Closed")}, QStringLiteral("a{sv}"), m_portal.get());
    connect(closed, &IncomingSignal::came, this, [this] { endWith(PortalAnswer::Declined); });
}

void GlobalShortcuts::handleActivated(const QVariantList &values)
{
    if (m_state != State::On || values.isEmpty()) {
        return;
    }
    const QString id = values.at(1).toString();
    const bool isOurs =
        values.at(0).toString() == m_session && std::ranges::find(m_shortcuts, id, &Shortcut::id) != m_shortcuts.end();
    if (isOurs) {
        const QString token = values.at(3).toMap().value(QStringLiteral("activation_token")).toString();
        Q_EMIT activated(id, {.x11StartupId = token, .waylandToken = token});
    }
}

/// The connection stays: it says when there is a portal again.
void GlobalShortcuts::handleLost()
{
    m_portal->silenceRequestsFor(this);
    m_session.clear();
    setState(State::Failed);
}

void GlobalShortcuts::endWith(PortalAnswer answer)
{
    letGo();
    setState(stateAfter(answer));
}

void GlobalShortcuts::letGo()
{
    PortalConnection::letGo(std::move(m_portal), this);
    m_session.clear();
}

void GlobalShortcuts::setState(State state)
{
    if (std::exchange(m_state, state) != state) {
        Q_EMIT stateChanged(state);
    }
}

} // namespace tunedeck

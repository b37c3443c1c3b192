// SPDX-License-Identifier: MIT
#include "ScriptedPortal.h"

#include "support/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>

namespace tunedeck {

namespace {
constexpr QLatin1String name("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");

QString pathFor(const QDBusMessage &call, const QString &kind, const QVariant &token)
{
    return QStringLiteral("%1/%2/%3/%4").arg(path, kind, call.service().mid(1).replace(u'.', u'_'), token.toString());
}

/// The name of the error that answers a call; empty if it gets another answer.
QString errorFor(ScriptedPortal::Way way)
{
    switch (way) {
    case ScriptedPortal::Way::Unknown:
        return QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
    case ScriptedPortal::Way::Refuse:
        return QStringLiteral("org.freedesktop.portal.Error.NotAllowed");
    case ScriptedPortal::Way::CannotStart:
        return QStringLiteral("org.freedesktop.DBus.Error.Spawn.ChildExited");
    default:
        return {};
    }
}
} // namespace

QDBusConnection ScriptedPortal::connectTo(const PrivateBus &bus)
{
    static int connections = 0;
    return bus.connect(QStringLiteral("scripted portal %1").arg(++connections));
}

QVariantMap ScriptedPortal::hugeMap()
{
    constexpr int size = 100'000;
    QVariantMap map;
    for (int i = 0; i < size; ++i) {
        map.insert(QString::number(i), i);
    }
    return map;
}

ScriptedPortal::ScriptedPortal(const QDBusConnection &bus)
    : m_bus(bus)
{
    m_bus.registerVirtualObject(path, this);
    m_bus.registerService(name);
}

ScriptedPortal::~ScriptedPortal()
{
    m_bus.unregisterService(name);
    m_bus.unregisterObject(path);
}

void ScriptedPortal::press(
    const QDBusConnection &bus, const QString &session, const QString &id, const QVariantMap &options)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        path, QStringLiteral("org.freedesktop.portal.GlobalShortcuts"), QStringLiteral("Activated"));
    signal << QVariant::fromValue(QDBusObjectPath(session)) << id << qulonglong(7) << options;
    bus.send(signal);
}

void ScriptedPortal::closeSession()
{
    QDBusMessage signal = QDBusMessage::createSignal(
        m_session, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed"));
    signal << QVariantMap();
    m_bus.send(signal);
}

void ScriptedPortal::answerLate()
{
    respond(m_unanswered, {0U, QVariantMap()});
}

bool ScriptedPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const QString member = message.member();
    const QVariantList arguments = message.arguments();
    if (!m_callers.contains(message.service())) {
        m_callers.append(message.service());
    }
    if (member == QLatin1String("Register")) {
        m_calls.append(member + u' ' + arguments.value(0).toString());
        answer(message, registration, {}, {});
        return true;
    }
    m_calls.append(member);
    const auto options = qdbus_cast<QVariantMap>(arguments.value(arguments.size() - 1));
    if (member == QLatin1String("CreateSession")) {
        m_session = pathFor(message, QStringLiteral("session"), options.value(QStringLiteral("session_handle_token")));
        const QString handle = session == Way::WrongResult ? QStringLiteral("/another") : m_session;
        answer(message, session, options, {{QStringLiteral("session_handle"), handle}});
    } else if (member == QLatin1String("BindShortcuts")) {
        bindShortcuts(message);
        answer(message, bind, options, {});
    } else if (member == QLatin1String("RequestBackground")) {
        m_backgroundOptions = options;
        const bool isStarted = options.value(QStringLiteral("autostart")).toBool();
        answer(message, background, options,
            {{QStringLiteral("autostart"), background == Way::WrongResult ? !isStarted : isStarted}});
    } else {
        return false;
    }
    return true;
}

QString ScriptedPortal::introspect(const QString &) const
{
    return {};
}

void ScriptedPortal::answer(const QDBusMessage &call, Way way, const QVariantMap &options, const QVariantMap &results)
{
    if (way == Way::Deaf) {
        call.setDelayedReply(true);
        return;
    }
    const QString error = errorFor(way);
    if (!error.isEmpty()) {
        m_bus.send(call.createErrorReply(error, QStringLiteral("Sorry")));
        return;
    }
    if (options.isEmpty()) {
        m_bus.send(call.createReply());
        return;
    }
    const QString request = pathFor(call, QStringLiteral("request"), options.value(QStringLiteral("handle_token")));
    m_bus.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    m_unanswered = request;
    if (way == Way::WrongType) {
        respond(request, {QStringLiteral("yes")});
    } else if (way != Way::Silent) {
        QVariantMap sent = way == Way::Huge ? hugeMap() : QVariantMap();
        sent.insert(results);
        respond(request, {way == Way::Decline ? 1U : 0U, sent});
    }
}

void ScriptedPortal::respond(const QString &request, const QVariantList &arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        request, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    signal.setArguments(arguments);
    m_bus.send(signal);
}

void ScriptedPortal::bindShortcuts(const QDBusMessage &call)
{
    m_boundIds.clear();
    const auto shortcuts = call.arguments().at(1).value<QDBusArgument>();
    shortcuts.beginArray();
    while (!shortcuts.atEnd()) {
        QString id;
        QVariantMap details;
        shortcuts.beginStructure();
        shortcuts >> id >> details;
        shortcuts.endStructure();
        m_boundIds.append(id + u'=' + details.value(QStringLiteral("description")).toString());
    }
    shortcuts.endArray();
}

} // namespace tunedeck

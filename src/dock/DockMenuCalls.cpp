// SPDX-License-Identifier: MIT
#include "dock/DockMenuCalls.h"

#include "dock/DockMenuServer.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusVariant>
#include <QLatin1String>
#include <QList>
#include <QStringList>
#include <QVariant>

namespace tunedeck {

namespace {

constexpr QLatin1String propertiesInterface("org.freedesktop.DBus.Properties");
constexpr QLatin1String introspection(R"xml(<interface name="com.canonical.dbusmenu">
  <property name="Version" type="u" access="read"/>
  <property name="TextDirection" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="IconThemePath" type="as" access="read"/>
  <method name="GetLayout">
    <arg name="parentId" type="i" direction="in"/>
    <arg name="recursionDepth" type="i" direction="in"/>
    <arg name="propertyNames" type="as" direction="in"/>
    <arg name="revision" type="u" direction="out"/>
    <arg name="layout" type="(ia{sv}av)" direction="out"/>
  </method>
  <method name="GetGroupProperties">
    <arg name="ids" type="ai" direction="in"/>
    <arg name="propertyNames" type="as" direction="in"/>
    <arg name="properties" type="a(ia{sv})" direction="out"/>
  </method>
  <method name="GetProperty">
    <arg name="id" type="i" direction="in"/>
    <arg name="name" type="s" direction="in"/>
    <arg name="value" type="v" direction="out"/>
  </method>
  <method name="Event">
    <arg name="id" type="i" direction="in"/>
    <arg name="eventId" type="s" direction="in"/>
    <arg name="data" type="v" direction="in"/>
    <arg name="timestamp" type="u" direction="in"/>
  </method>
  <method name="EventGroup">
    <arg name="events" type="a(isvu)" direction="in"/>
    <arg name="idErrors" type="ai" direction="out"/>
  </method>
  <method name="AboutToShow">
    <arg name="id" type="i" direction="in"/>
    <arg name="needUpdate" type="b" direction="out"/>
  </method>
  <method name="AboutToShowGroup">
    <arg name="ids" type="ai" direction="in"/>
    <arg name="updatesNeeded" type="ai" direction="out"/>
    <arg name="idErrors" type="ai" direction="out"/>
  </method>
  <signal name="LayoutUpdated">
    <arg name="revision" type="u"/>
    <arg name="parent" type="i"/>
  </signal>
</interface>
)xml");

QList<int> numbers(const QVariant &argument)
{
    return qdbus_cast<QList<int>>(argument);
}

} // namespace

DockMenuCalls::DockMenuCalls(const QDBusConnection &bus, const QString &path, DockMenuServer &server)
    : m_server(server)
    , m_calls(bus, path, introspection)
{
    connect(&m_calls, &IncomingCalls::called, this, &DockMenuCalls::handle);
}

void DockMenuCalls::handle(const QDBusMessage &call)
{
    const QString method = call.member() + u' ' + call.signature();
    const QVariantList arguments = call.arguments();
    Values values;
    if (call.interface() == propertiesInterface) {
        values = propertyAnswer(method, arguments);
    } else if (call.interface().isEmpty() || call.interface() == DockMenuServer::interface) {
        values = menuAnswer(method, arguments);
        if (!values) {
            values = eventAnswer(method, arguments);
        }
    }
    if (m_server.takeRefusal()) {
        m_calls.refuse(call, QDBusError::InvalidArgs, QStringLiteral("No such item or property"));
    } else if (values) {
        m_calls.answer(call, *values);
    } else {
        m_calls.refuse(call, QDBusError::UnknownMethod, QStringLiteral("No such method"));
    }
}

DockMenuCalls::Values DockMenuCalls::menuAnswer(const QString &method, const QVariantList &arguments)
{
    if (method == u"GetLayout iias") {
        DockMenuLayout layout;
        const uint revision =
            m_server.GetLayout(arguments[0].toInt(), arguments[1].toInt(), arguments[2].toStringList(), layout);
        return QVariantList{revision, QVariant::fromValue(layout)};
    }
    if (method == u"GetGroupProperties aias") {
        const QList<DockMenuItem> group =
            m_server.GetGroupProperties(numbers(arguments[0]), arguments[1].toStringList());
        return QVariantList{QVariant::fromValue(group)};
    }
    if (method == u"GetProperty is") {
        const QVariant value = m_server.GetProperty(arguments[0].toInt(), arguments[1].toString());
        return QVariantList{QVariant::fromValue(QDBusVariant(value))};
    }
    return std::nullopt;
}

DockMenuCalls::Values DockMenuCalls::eventAnswer(const QString &method, const QVariantList &arguments)
{
    if (method == u"Event isvu") {
        m_server.Event(arguments[0].toInt(), arguments[1].toString());
        return QVariantList();
    }
    if (method == u"EventGroup a(isvu)") {
        const QList<int> unknown = m_server.EventGroup(qdbus_cast<QList<DockMenuEvent>>(arguments[0]));
        return QVariantList{QVariant::fromValue(unknown)};
    }
    if (method == u"AboutToShow i") {
        return QVariantList{m_server.AboutToShow(arguments[0].toInt())};
    }
    if (method == u"AboutToShowGroup ai") {
        QList<int> unknown;
        const QList<int> changed = m_server.AboutToShowGroup(numbers(arguments[0]), unknown);
        return QVariantList{QVariant::fromValue(changed), QVariant::fromValue(unknown)};
    }
    return std::nullopt;
}

DockMenuCalls::Values DockMenuCalls::propertyAnswer(const QString &method, const QVariantList &arguments) const
{
    if (arguments.value(0).toString() != DockMenuServer::interface) {
        return std::nullopt;
    }
    const QVariantMap all = properties();
    if (method == u"GetAll s") {
        return QVariantList{all};
    }
    const QString name = arguments.value(1).toString();
    return method == u"Get ss" && all.contains(name)
        ? Values(QVariantList{QVariant::fromValue(QDBusVariant(all.value(name)))})
        : std::nullopt;
}

QVariantMap DockMenuCalls::properties() const
{
    return {{QStringLiteral("Version"), m_server.version()},
        {QStringLiteral("TextDirection"), m_server.textDirection()}, {QStringLiteral("Status"), m_server.status()},
        {QStringLiteral("IconThemePath"), m_server.iconThemePath()}};
}

} // namespace tunedeck

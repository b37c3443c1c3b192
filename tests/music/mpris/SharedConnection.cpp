// SPDX-License-Identifier: MIT
#include "SharedConnection.h"

#include "music/mpris/bus/MprisNames.h"

#include <QHash>

#include <mutex>
#include <utility>

#include <gio/gio.h>

using namespace Qt::StringLiterals;

namespace tunedeck {

// QtDBus does not tell an exported object which name a call was sent to.

namespace {

struct FreeMessage {
    void operator()(GDBusMessage *message) const { g_object_unref(message); }
};
using Message = std::unique_ptr<GDBusMessage, FreeMessage>;

const char *statusOf(const SharedConnection::Report &report)
{
    return report.isPlaying ? "Playing" : "Paused";
}

GVariant *rootProperties(const QString &name)
{
    return g_variant_new_parsed("({'Identity': <%s>, 'CanRaise': <true>},)", qUtf8Printable(name));
}

GVariant *playerProperties(const SharedConnection::Report &report)
{
    return g_variant_new_parsed("({'PlaybackStatus': <%s>, 'CanControl': <true>, 'CanPlay': <true>, 'CanPause': <true>,"
                                " 'CanGoNext': <true>, 'Volume': <1.0>, 'Metadata': <{'mpris:trackid': <'/track/1'>,"
                                " 'mpris:length': <int64 100000000>, 'xesam:artist': <['Quince']>, 'xesam:album': "
                                "<'Harbour'>, 'xesam:title': <%s>}>},)",
        statusOf(report), qUtf8Printable(report.title));
}

/// The text that is the argument of the message at `index`; empty if there is none.
QString argument(GDBusMessage *message, gsize index)
{
    GVariant *body = g_dbus_message_get_body(message);
    if (!body || g_variant_n_children(body) <= index) {
        return {};
    }
    GVariant *child = g_variant_get_child_value(body, index);
    const QString text = g_variant_classify(child) == G_VARIANT_CLASS_STRING
        ? QString::fromUtf8(g_variant_get_string(child, nullptr))
        : QString();
    g_variant_unref(child);
    return text;
}

bool callDaemon(GDBusConnection *bus, const char *method, GVariant *arguments)
{
    GVariant *answer = g_dbus_connection_call_sync(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (!answer) {
        return false;
    }
    guint32 code = 0;
    g_variant_get(answer, "(u)", &code);
    g_variant_unref(answer);
    return code == 1;
}

void send(GDBusConnection *bus, GDBusMessage *message)
{
    g_dbus_connection_send_message(bus, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
}

void reply(GDBusConnection *bus, GDBusMessage *call, GVariant *body)
{
    const Message answer(g_dbus_message_new_method_reply(call));
    if (body) {
        g_dbus_message_set_body(answer.get(), body);
    }
    send(bus, answer.get());
}

void refuse(GDBusConnection *bus, GDBusMessage *call)
{
    const Message answer(g_dbus_message_new_method_error_literal(
        call, "org.freedesktop.DBus.Error.UnknownInterface", "The player does not have this"));
    send(bus, answer.get());
}

void sendChange(GDBusConnection *bus, const SharedConnection::Report &report)
{
    g_dbus_connection_emit_signal(bus, nullptr, qUtf8Printable(mpris::objectPath),
        qUtf8Printable(mpris::propertiesInterface), "PropertiesChanged",
        g_variant_new_parsed("(%s, {'PlaybackStatus': <%s>, 'Metadata': <{'mpris:trackid': <'/track/1'>,"
                             " 'mpris:length': <int64 100000000>, 'xesam:artist': <['Quince']>, 'xesam:album': "
                             "<'Harbour'>, 'xesam:title': <%s>}>}, @as [])",
            qUtf8Printable(mpris::playerInterface), statusOf(report), qUtf8Printable(report.title)),
        nullptr);
}

/// The call in one line.
QString lineOf(GDBusMessage *call)
{
    const QString member = QString::fromUtf8(g_dbus_message_get_member(call));
    if (member == u"GetAll") {
        return member + u' ' + argument(call, 0);
    }
    return member == u"Set" ? member + u' ' + argument(call, 1) : member;
}

} // namespace

struct SharedConnection::State {
    std::mutex mutex;
    QStringList names; ///< in the order in which they were taken
    QHash<QString, Report> reports; ///< by name
    QHash<QString, QStringList> calls; ///< by name

    [[nodiscard]] QString calledPlayer(GDBusMessage *call) const;
    void answer(GDBusConnection *bus, GDBusMessage *call);
};

struct SharedConnection::Link {
    struct Unref {
        void operator()(GDBusConnection *connection) const { g_object_unref(connection); }
    };

    std::unique_ptr<GDBusConnection, Unref> bus;

    static GDBusMessage *filter(GDBusConnection *bus, GDBusMessage *message, gboolean isIncoming, gpointer state);
};

QString SharedConnection::State::calledPlayer(GDBusMessage *call) const
{
    const QString destination = QString::fromUtf8(g_dbus_message_get_destination(call));
    if (destination.startsWith(mpris::namePrefix)) {
        return destination.mid(mpris::namePrefix.size());
    }
    return names.size() == 1 ? names.first() : QString();
}

void SharedConnection::State::answer(GDBusConnection *bus, GDBusMessage *call)
{
    const std::lock_guard lock(mutex);
    const QString name = calledPlayer(call);
    const QString line = lineOf(call);
    calls[name].append(line);
    // A call to the connection alone is taken for one to its first player.
    const QString answering = name.isEmpty() ? names.value(0) : name;
    Report &report = reports[answering];
    if (line == u"GetAll "_s + mpris::rootInterface) {
        reply(bus, call, rootProperties(answering));
    } else if (line == u"GetAll "_s + mpris::playerInterface) {
        reply(bus, call, playerProperties(report));
    } else if (line.startsWith(u"Get")) {
        refuse(bus, call);
    } else {
        reply(bus, call, nullptr);
    }
    if (line == u"PlayPause") {
        report.isPlaying = !report.isPlaying;
        sendChange(bus, report);
    }
}

GDBusMessage *SharedConnection::Link::filter(
    GDBusConnection *bus, GDBusMessage *message, gboolean isIncoming, gpointer state)
{
    const bool isCall = isIncoming && g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL;
    if (!isCall || QString::fromUtf8(g_dbus_message_get_path(message)) != mpris::objectPath) {
        return message;
    }
    const Message call(message);
    (*static_cast<std::shared_ptr<State> *>(state))->answer(bus, call.get());
    return nullptr;
}

SharedConnection::SharedConnection(const QString &address)
    : m_state(std::make_shared<State>())
    , m_link(std::make_unique<Link>())
{
    m_link->bus.reset(g_dbus_connection_new_for_address_sync(qUtf8Printable(address),
        GDBusConnectionFlags(
            G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (m_link->bus) {
        // The connection's thread may filter a last message when this object is gone.
        g_dbus_connection_add_filter(m_link->bus.get(), &Link::filter, new std::shared_ptr<State>(m_state),
            [](gpointer state) { delete static_cast<std::shared_ptr<State> *>(state); });
    }
}

SharedConnection::~SharedConnection()
{
    if (m_link->bus) {
        g_dbus_connection_close_sync(m_link->bus.get(), nullptr, nullptr);
    }
}

bool SharedConnection::isConnected() const
{
    return m_link->bus != nullptr;
}

bool SharedConnection::take(const QString &name, const Report &report)
{
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->names.append(name);
        m_state->reports.insert(name, report);
    }
    constexpr guint32 doNotQueue = 4;
    return callDaemon(
        m_link->bus.get(), "RequestName", g_variant_new("(su)", qUtf8Printable(mpris::namePrefix + name), doNotQueue));
}

bool SharedConnection::giveUp(const QString &name)
{
    const bool isGone =
        callDaemon(m_link->bus.get(), "ReleaseName", g_variant_new("(s)", qUtf8Printable(mpris::namePrefix + name)));
    const std::lock_guard lock(m_state->mutex);
    m_state->names.removeOne(name);
    return isGone;
}

void SharedConnection::set(const QString &name, const Report &report)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->reports.insert(name, report);
}

void SharedConnection::announce(const QString &name)
{
    const std::lock_guard lock(m_state->mutex);
    sendChange(m_link->bus.get(), m_state->reports.value(name));
}

QStringList SharedConnection::takeCalls(const QString &name)
{
    const std::lock_guard lock(m_state->mutex);
    return std::exchange(m_state->calls[name], {});
}

} // namespace tunedeck

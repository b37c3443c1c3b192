// SPDX-License-Identifier: MIT
#include "SharedConnection.h"

#include "support/PrivateBus.h"

namespace tunedeck {

namespace {

const QByteArray prefix("org.mpris.MediaPlayer2.");

void add(GVariantBuilder &properties, const char *key, GVariant *value)
{
    g_variant_builder_add(&properties, "{sv}", key, value);
}

GVariant *track(const QByteArray &player)
{
    GVariantBuilder metadata;
    g_variant_builder_init(&metadata, G_VARIANT_TYPE_VARDICT);
    add(metadata, "mpris:trackid", g_variant_new_object_path("/track/1"));
    add(metadata, "mpris:length", g_variant_new_int64(60'000'000));
    add(metadata, "xesam:title", g_variant_new_string(player.constData()));
    return g_variant_builder_end(&metadata);
}

GVariant *properties(const QByteArray &player)
{
    GVariantBuilder all;
    g_variant_builder_init(&all, G_VARIANT_TYPE_VARDICT);
    add(all, "Identity", g_variant_new_string(player.constData()));
    add(all, "CanRaise", g_variant_new_boolean(TRUE));
    add(all, "PlaybackStatus", g_variant_new_string(player.startsWith("playing") ? "Playing" : "Paused"));
    add(all, "Metadata", track(player));
    add(all, "Position", g_variant_new_int64(0));
    GVariant *dictionary = g_variant_builder_end(&all);
    return g_variant_new_tuple(&dictionary, 1);
}

} // namespace

SharedConnection::SharedConnection(const PrivateBus &bus)
    : m_connection(g_dbus_connection_new_for_address_sync(bus.address().toUtf8().constData(),
        GDBusConnectionFlags(
            G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr))
{
    if (m_connection) {
        m_filter = g_dbus_connection_add_filter(m_connection, &SharedConnection::handle, this, nullptr);
    }
}

SharedConnection::~SharedConnection()
{
    if (m_connection) {
        g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
        g_dbus_connection_remove_filter(m_connection, m_filter);
        g_object_unref(m_connection);
    }
}

bool SharedConnection::take(const QByteArray &player)
{
    {
        const std::lock_guard lock(m_mutex);
        m_first = m_first.isEmpty() ? player : m_first;
    }
    GVariant *reply = m_connection
        ? g_dbus_connection_call_sync(m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
            "org.freedesktop.DBus", "RequestName", g_variant_new("(su)", (prefix + player).constData(), 0U), nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr)
        : nullptr;
    const bool isTaken = reply != nullptr;
    g_clear_pointer(&reply, g_variant_unref);
    return isTaken;
}

QStringList SharedConnection::calls()
{
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

void SharedConnection::forgetCalls()
{
    const std::lock_guard lock(m_mutex);
    m_calls.clear();
}

GDBusMessage *SharedConnection::handle(
    GDBusConnection *connection, GDBusMessage *message, gboolean isIncoming, gpointer self)
{
    if (!isIncoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
        return message;
    }
    const QByteArray destination(g_dbus_message_get_destination(message));
    const QByteArray player = destination.startsWith(prefix) ? destination.mid(prefix.size()) : QByteArray("?");
    GDBusMessage *reply = g_dbus_message_new_method_reply(message);
    if (GVariant *body = static_cast<SharedConnection *>(self)->answer(player, *message)) {
        g_dbus_message_set_body(reply, body);
    }
    g_dbus_connection_send_message(connection, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
    g_object_unref(reply);
    g_object_unref(message);
    return nullptr;
}

GVariant *SharedConnection::answer(const QByteArray &player, GDBusMessage &call)
{
    const QByteArray method(g_dbus_message_get_member(&call));
    const std::lock_guard lock(m_mutex);
    if (method == "GetAll") {
        return properties(player == "?" ? m_first : player);
    }
    m_calls.append(QString::fromUtf8(player + ' ' + method));
    return nullptr;
}

} // namespace tunedeck

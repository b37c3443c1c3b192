// SPDX-License-Identifier: MIT
#include "StormPlayer.h"

namespace tunedeck::storm {

namespace {

QByteArray firstText(GDBusMessage *message)
{
    GVariant *body = g_dbus_message_get_body(message);
    if (!body || g_variant_n_children(body) == 0) {
        return {};
    }
    GVariant *first = g_variant_get_child_value(body, 0);
    const QByteArray text =
        g_variant_is_of_type(first, G_VARIANT_TYPE_STRING) ? g_variant_get_string(first, nullptr) : QByteArray();
    g_variant_unref(first);
    return text;
}

void writeRoot(Values &values)
{
    values.array(8, [&values] {
        values.textEntry("Identity", "Storm");
        values.textEntry("DesktopEntry", "");
        values.boolEntry("CanRaise", false);
        values.boolEntry("CanQuit", false);
        values.boolEntry("HasTrackList", false);
    });
}

} // namespace

void Container::write(Values &values) const
{
    if (type == "s") {
        values.text(QByteArray(size, 'x'));
        return;
    }
    const auto fill = [this, &values](const auto &writeElement) {
        for (const qsizetype end = values.size() + size; values.size() < end;) {
            writeElement();
        }
    };
    if (type == "as") {
        values.array(4, [&] { fill([&values] { values.text("abc"); }); });
    } else if (type == "av") {
        values.array(1, [&] {
            fill([&values] {
                values.signature("y");
                values.byte(1);
            });
        });
    } else if (type == "a{sv}") {
        values.array(8, [&] { fill([&values] { values.boolEntry("abc", true); }); });
    } else {
        values.array(1, [&] { fill([&values] { values.byte(1); }); });
    }
}

QByteArray StormPlayer::answer(GDBusMessage *call) const
{
    Message message{.type = Message::Type::Answer,
        .answers = g_dbus_message_get_serial(call),
        .destination = g_dbus_message_get_sender(call)};
    Values body;
    const QByteArray method = g_dbus_message_get_member(call);
    const QByteArray interface = firstText(call);
    if (method == "GetAll") {
        message.signature = "a{sv}";
        if (interface == "org.mpris.MediaPlayer2.Player") {
            writePlayer(body);
        } else if (interface == "org.mpris.MediaPlayer2") {
            writeRoot(body);
        } else {
            body.array(8, [] { });
        }
    }
    return message.bytes(body);
}

QByteArray StormPlayer::change(const QByteArray &destination) const
{
    const Message message{.destination = destination,
        .path = name::playerPath,
        .interface = "org.freedesktop.DBus.Properties",
        .member = "PropertiesChanged",
        .signature = "sa{sv}as"};
    Values body;
    body.text("org.mpris.MediaPlayer2.Player");
    body.array(8, [&] {
        body.textEntry("PlaybackStatus", m_isPlaying ? "Playing" : "Paused");
        body.entry("Metadata", "a{sv}", [&] { writeMetadata(body); });
    });
    body.array(4, [] { });
    return message.bytes(body);
}

void StormPlayer::writePlayer(Values &values) const
{
    values.array(8, [&] {
        values.textEntry("PlaybackStatus", m_isPlaying ? "Playing" : "Paused");
        values.entry("Metadata", "a{sv}", [&] { writeMetadata(values); });
        values.entry("Position", "x", [&values] { values.number64(0); });
        for (const char *can : {"CanGoNext", "CanGoPrevious", "CanPlay", "CanPause", "CanSeek", "CanControl"}) {
            values.boolEntry(can, true);
        }
    });
}

void StormPlayer::writeMetadata(Values &values) const
{
    values.array(8, [&] {
        values.entry("mpris:trackid", "o", [&values] { values.text("/storm/track"); });
        values.entry("mpris:length", "x", [&values] { values.number64(180'000'000); });
        values.textEntry("xesam:title", m_title);
        if (m_container.size > 0) {
            values.entry("xesam:artist", m_container.type, [&] { m_container.write(values); });
        }
    });
}

} // namespace tunedeck::storm

// SPDX-License-Identifier: MIT
#include "x11/x11.h"

#include <QGuiApplication>

#include <xcb/sync.h>

#include <algorithm>
#include <cstring>
#include <span>
#include <string_view>

namespace tunedeck {

namespace {
constexpr std::uint32_t mostAtoms = 100;

/// The characters follow the length. XCB looks for them two bytes later, because it counts the structure's padding.
std::string_view nameOf(const xcb_sync_systemcounter_t &counter)
{
    return {reinterpret_cast<const char *>(&counter.name_len + 1), counter.name_len};
}

/// The counter that is the server's clock. XCB_NONE if there is none.
xcb_sync_counter_t serverClock()
{
    constexpr std::string_view name = "SERVERTIME";
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(x11Connection(), &xcb_sync_id);
    if (!extension || !extension->present) {
        return XCB_NONE;
    }
    const auto cookie = xcb_sync_list_system_counters(x11Connection());
    const X11Reply<xcb_sync_list_system_counters_reply_t> reply(
        xcb_sync_list_system_counters_reply(x11Connection(), cookie, nullptr));
    if (!reply) {
        return XCB_NONE;
    }
    auto counters = xcb_sync_list_system_counters_counters_iterator(reply.get());
    for (; counters.rem > 0; xcb_sync_systemcounter_next(&counters)) {
        if (nameOf(*counters.data) == name) {
            return counters.data->counter;
        }
    }
    return XCB_NONE;
}
} // namespace

xcb_connection_t *x11Connection()
{
    // Qt's offscreen platform has this interface too, but no connection.
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t x11Atom(const char *name)
{
    return x11Atoms({name}).front();
}

std::vector<xcb_atom_t> x11Atoms(std::initializer_list<const char *> names)
{
    xcb_connection_t *const server = x11Connection();
    std::vector<xcb_intern_atom_cookie_t> cookies;
    for (const char *name : names) {
        cookies.push_back(xcb_intern_atom(server, false, static_cast<std::uint16_t>(std::strlen(name)), name));
    }
    std::vector<xcb_atom_t> atoms;
    for (const xcb_intern_atom_cookie_t cookie : cookies) {
        const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, cookie, nullptr));
        atoms.push_back(reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE});
    }
    return atoms;
}

std::optional<std::uint32_t> x11Number(xcb_window_t window, xcb_atom_t property)
{
    const auto cookie = xcb_get_property(x11Connection(), false, window, property, XCB_ATOM_ANY, 0, 1);
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(x11Connection(), cookie, nullptr));
    std::uint32_t number = 0;
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != sizeof number) {
        return std::nullopt;
    }
    std::memcpy(&number, xcb_get_property_value(reply.get()), sizeof number);
    return number;
}

bool x11HasAtom(xcb_window_t window, xcb_atom_t property, xcb_atom_t atom)
{
    const auto cookie = xcb_get_property(x11Connection(), false, window, property, XCB_ATOM_ATOM, 0, mostAtoms);
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(x11Connection(), cookie, nullptr));
    if (!reply || reply->format != 32) {
        return false;
    }
    const std::span atoms(static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get())), reply->value_len);
    return std::ranges::find(atoms, atom) != atoms.end();
}

std::optional<QRect> x11Geometry(xcb_window_t window)
{
    xcb_connection_t *server = x11Connection();
    const X11Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(server, xcb_get_geometry(server, window), nullptr));
    if (!geometry) {
        return std::nullopt;
    }
    const auto cookie = xcb_translate_coordinates(server, window, geometry->root, 0, 0);
    const X11Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(server, cookie, nullptr));
    if (!place) {
        return std::nullopt;
    }
    return QRect(place->dst_x, place->dst_y, geometry->width, geometry->height);
}

std::optional<std::uint32_t> x11Time()
{
    static const xcb_sync_counter_t clock = serverClock();
    if (clock == XCB_NONE) {
        return std::nullopt;
    }
    const auto cookie = xcb_sync_query_counter(x11Connection(), clock);
    const X11Reply<xcb_sync_query_counter_reply_t> reply(
        xcb_sync_query_counter_reply(x11Connection(), cookie, nullptr));
    return reply ? std::optional(reply->counter_value.lo) : std::nullopt;
}

int defaultScreenNumber()
{
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    xcb_parse_display(nullptr, &host, &display, &screen);
    std::free(host);
    return screen;
}

} // namespace tunedeck

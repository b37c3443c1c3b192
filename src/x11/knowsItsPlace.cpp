// SPDX-License-Identifier: MIT
#include "x11/knowsItsPlace.h"

#include "platform/windowSystem.h"
#include "x11/x11.h"

#include <QPointF>
#include <QScreen>
#include <QWindow>

#include <cmath>
#include <optional>

namespace tunedeck {

namespace {
/// Qt rounds places to whole points. A frame is wider.
constexpr double mostRounding = 2;

/// In pixels. Qt scales what is on a screen, but not the places of the screens.
QPointF placeByQt(const QWindow &window)
{
    const QPointF screen = window.screen()->geometry().topLeft();
    return screen + (QPointF(window.geometry().topLeft()) - screen) * window.devicePixelRatio();
}

std::optional<QPointF> placeByServer(const QWindow &window)
{
    const auto own = static_cast<xcb_window_t>(window.winId());
    xcb_connection_t *server = x11Connection();
    const X11Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(server, xcb_get_geometry(server, own), nullptr));
    if (!geometry) {
        return std::nullopt;
    }
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(server, xcb_translate_coordinates(server, own, geometry->root, 0, 0), nullptr));
    return place ? std::optional(QPointF(place->dst_x, place->dst_y)) : std::nullopt;
}
} // namespace

bool knowsItsPlace(const QWindow &window)
{
    if (!x11Connection()) {
        return !isWayland();
    }
    const std::optional<QPointF> place = placeByServer(window);
    if (!place) {
        return false;
    }
    const QPointF difference = *place - placeByQt(window);
    return std::abs(difference.x()) <= mostRounding && std::abs(difference.y()) <= mostRounding;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "frameExtents.h"

#include <QGuiApplication>
#include <QMargins>
#include <QRect>
#include <QWindow>

#include <xcb/shape.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace tunedeck {

namespace {
constexpr const char *frameExtentsName = "_GTK_FRAME_EXTENTS";

/// Null on any other window system; the offscreen platform offers the interface without a connection behind it.
xcb_connection_t *connection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t frameExtentsAtom()
{
    static const xcb_atom_t atom = [] {
        const auto cookie = xcb_intern_atom(
            connection(), false, static_cast<std::uint16_t>(std::strlen(frameExtentsName)), frameExtentsName);
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection(), cookie, nullptr), &std::free);
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }();
    return atom;
}
} // namespace

bool setFrameExtents(const QWindow &window, const QMargins &extents)
{
    if (!connection()) {
        return false;
    }
    const double scale = window.devicePixelRatio();
    std::array<std::uint32_t, 4> pixels{};
    std::size_t side = 0;
    for (const int points : {extents.left(), extents.right(), extents.top(), extents.bottom()}) {
        pixels.at(side++) = static_cast<std::uint32_t>(qRound(points * scale));
    }
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
        frameExtentsAtom(), XCB_ATOM_CARDINAL, 32, pixels.size(), pixels.data());
    return true;
}

void setInputRegion(const QWindow &window, const QRect &region)
{
    if (!connection()) {
        return;
    }
    const double scale = window.devicePixelRatio();
    const QRect pixels = QRectF(QPointF(region.topLeft()) * scale, QSizeF(region.size()) * scale).toAlignedRect();
    const xcb_rectangle_t rectangle{static_cast<std::int16_t>(pixels.x()), static_cast<std::int16_t>(pixels.y()),
        static_cast<std::uint16_t>(pixels.width()), static_cast<std::uint16_t>(pixels.height())};
    xcb_shape_rectangles(connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
        static_cast<xcb_window_t>(window.winId()), 0, 0, 1, &rectangle);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "x11/frameExtents.h"

#include "x11/x11.h"

#include <QMargins>
#include <QRect>
#include <QWindow>

#include <xcb/shape.h>

#include <array>

namespace tunedeck {

namespace {
xcb_atom_t frameExtentsAtom()
{
    static const xcb_atom_t atom = x11Atom("_GTK_FRAME_EXTENTS");
    return atom;
}
} // namespace

bool setFrameExtents(const QWindow &window, const QMargins &extents)
{
    if (!x11Connection()) {
        return false;
    }
    const double scale = window.devicePixelRatio();
    std::array<std::uint32_t, 4> pixels{};
    std::size_t side = 0;
    for (const int points : {extents.left(), extents.right(), extents.top(), extents.bottom()}) {
        pixels.at(side++) = static_cast<std::uint32_t>(qRound(points * scale));
    }
    xcb_change_property(x11Connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
        frameExtentsAtom(), XCB_ATOM_CARDINAL, 32, pixels.size(), pixels.data());
    return true;
}

void setInputRegion(const QWindow &window, const QRect &region)
{
    if (!x11Connection()) {
        return;
    }
    const double scale = window.devicePixelRatio();
    const QRect pixels = QRectF(QPointF(region.topLeft()) * scale, QSizeF(region.size()) * scale).toAlignedRect();
    const xcb_rectangle_t rectangle{static_cast<std::int16_t>(pixels.x()), static_cast<std::int16_t>(pixels.y()),
        static_cast<std::uint16_t>(pixels.width()), static_cast<std::uint16_t>(pixels.height())};
    xcb_shape_rectangles(x11Connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
        static_cast<xcb_window_t>(window.winId()), 0, 0, 1, &rectangle);
}

} // namespace tunedeck

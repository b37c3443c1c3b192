// SPDX-License-Identifier: MIT
#include "x11/knowsItsPlace.h"

#include "platform/windowSystem.h"
#include "x11/x11.h"

#include <QPointF>
#include <QRect>
#include <QScreen>
#include <QWindow>

#include <cmath>

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
} // namespace

bool knowsItsPlace(const QWindow &window)
{
    if (!x11Connection()) {
        return !isWayland();
    }
    const auto geometry = x11Geometry(static_cast<xcb_window_t>(window.winId()));
    if (!geometry) {
        return false;
    }
    const QPointF difference = QPointF(geometry->topLeft()) - placeByQt(window);
    return std::abs(difference.x()) <= mostRounding && std::abs(difference.y()) <= mostRounding;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "x11/correctPlace.h"

#include "x11/knowsItsPlace.h"
#include "x11/x11.h"

#include <QWindow>

namespace tunedeck {

namespace {
/// The event by which a window manager reports a window's place. Qt asks nothing when it gets one.
void sendPlace(xcb_window_t window, const QRect &geometry)
{
    xcb_configure_notify_event_t event{};
    event.response_type = XCB_CONFIGURE_NOTIFY;
    event.event = window;
    event.window = window;
    event.x = static_cast<std::int16_t>(geometry.x());
    event.y = static_cast<std::int16_t>(geometry.y());
    event.width = static_cast<std::uint16_t>(geometry.width());
    event.height = static_cast<std::uint16_t>(geometry.height());
    // Without a mask, it goes to the window's creator alone, which is this program.
    xcb_send_event(x11Connection(), false, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&event));
}
} // namespace

void correctPlace(const QWindow &window)
{
    if (!x11Connection() || knowsItsPlace(window)) {
        return;
    }
    const auto own = static_cast<xcb_window_t>(window.winId());
    // Nothing moves the window between the question and the event, which would then be older than the move.
    xcb_grab_server(x11Connection());
    if (const auto geometry = x11Geometry(own)) {
        sendPlace(own, *geometry);
    }
    xcb_ungrab_server(x11Connection());
    xcb_flush(x11Connection());
}

} // namespace tunedeck

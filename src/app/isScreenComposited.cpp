// SPDX-License-Identifier: MIT
#include "isScreenComposited.h"

#include <QByteArray>
#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace tunedeck {

namespace {
struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};
template <typename Reply> using ReplyPointer = std::unique_ptr<Reply, FreeReply>;

int defaultScreenNumber()
{
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    xcb_parse_display(nullptr, &host, &display, &screen);
    std::free(host);
    return screen;
}

/// The selection that a compositor owns as long as it runs.
xcb_atom_t compositorSelection(xcb_connection_t *connection)
{
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(defaultScreenNumber());
    const auto cookie = xcb_intern_atom(connection, false, static_cast<std::uint16_t>(name.size()), name.constData());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}
} // namespace

bool isScreenComposited()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // The offscreen platform offers the interface without a connection behind it.
    if (!x11 || !x11->connection()) {
        return true;
    }
    static const xcb_atom_t selection = compositorSelection(x11->connection());
    const auto cookie = xcb_get_selection_owner(x11->connection(), selection);
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x11->connection(), cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace tunedeck

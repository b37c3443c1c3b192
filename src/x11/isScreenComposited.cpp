// SPDX-License-Identifier: MIT
#include "x11/isScreenComposited.h"

#include "x11/x11.h"

#include <QByteArray>

namespace tunedeck {

namespace {
/// The selection that a compositor owns as long as it runs.
xcb_atom_t compositorSelection()
{
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(defaultScreenNumber());
    return x11Atom(name.constData());
}
} // namespace

bool isScreenComposited()
{
    if (!x11Connection()) {
        return true;
    }
    static const xcb_atom_t selection = compositorSelection();
    const auto cookie = xcb_get_selection_owner(x11Connection(), selection);
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x11Connection(), cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <memory>
#include <optional>

namespace tunedeck {

/// About the scale that Qt will give a window on X11: 1 for 96 dots per inch. Qt's variables in the environment come
/// before the X server's `resources`, which have a line for each. Of several screens with factors of their own, the
/// largest counts, also if that screen is not there. Variables that round the scale or switch it off do not count, nor
/// does a change while the program runs. So it may decide what is faster, but not what is right.
[[nodiscard]] double expectedScale(const QByteArray &resources);

struct DisconnectFromX11 {
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};
/// A connection to the display in $DISPLAY beside Qt's, for questions before there is an application object. Some X
/// servers start again or end when their last client leaves, so keep the connection until Qt has its own.
using EarlyX11Connection = std::unique_ptr<xcb_connection_t, DisconnectFromX11>;

/// Waits for the X server. Null if there is none.
[[nodiscard]] EarlyX11Connection connectToX11Early();

/// The same for the display that `server` is connected to. Waits for its answer.
[[nodiscard]] double expectedScale(xcb_connection_t &server);

} // namespace tunedeck

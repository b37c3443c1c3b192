// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

namespace tunedeck {

struct FreeX11Reply {
    void operator()(void *reply) const { std::free(reply); }
};
/// What the X server answers belongs to who asked.
template <typename Reply> using X11Reply = std::unique_ptr<Reply, FreeX11Reply>;

/// The toolkit's connection; null on any other window system. What follows needs one, asks the X server and waits for
/// its answer.
[[nodiscard]] xcb_connection_t *x11Connection();

/// The number of the atom `name`; XCB_ATOM_NONE if the server does not answer.
[[nodiscard]] xcb_atom_t x11Atom(const char *name);

/// The first number of the window's property, whatever its type; none where it is not there or holds no such numbers.
[[nodiscard]] std::optional<std::uint32_t> x11Number(xcb_window_t window, xcb_atom_t property);

/// The atoms that the window's property lists, at most the first 100; none where it is not there or holds no atoms.
[[nodiscard]] std::vector<xcb_atom_t> x11Atoms(xcb_window_t window, xcb_atom_t property);

/// The number of the screen that $DISPLAY names. It needs no connection.
[[nodiscard]] int defaultScreenNumber();

} // namespace tunedeck

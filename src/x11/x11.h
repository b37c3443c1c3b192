// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

namespace tunedeck {

struct FreeX11Reply {
    void operator()(void *reply) const { std::free(reply); }
};
/// A reply of the X server, which its receiver must free.
template <typename Reply> using X11Reply = std::unique_ptr<Reply, FreeX11Reply>;

/// Qt's connection to the X server. Null on any other window system. The functions below need a connection and wait for
/// the X server's answer, unless they say otherwise.
[[nodiscard]] xcb_connection_t *x11Connection();

/// The number of the atom `name`. XCB_ATOM_NONE if the server does not answer.
[[nodiscard]] xcb_atom_t x11Atom(const char *name);

/// The numbers of the atoms `names`, in their order. The server answers for all at once.
[[nodiscard]] std::vector<xcb_atom_t> x11Atoms(std::initializer_list<const char *> names);

/// The first number in the window's property, whatever its type. No value if the property is missing or does not hold
/// 32-bit numbers.
[[nodiscard]] std::optional<std::uint32_t> x11Number(xcb_window_t window, xcb_atom_t property);

/// Whether `atom` is one of the first 100 in the window's property. False if the property is missing or does not hold
/// atoms.
[[nodiscard]] bool x11HasAtom(xcb_window_t window, xcb_atom_t property, xcb_atom_t atom);

/// The window without its border, in pixels of the screen. No value if there is no such window.
[[nodiscard]] std::optional<QRect> x11Geometry(xcb_window_t window);

/// The time on the X server's clock, in milliseconds. It starts again at zero every 49 days. No value if the server
/// does not say.
[[nodiscard]] std::optional<std::uint32_t> x11Time();

/// The number of the screen in $DISPLAY. Needs no connection.
[[nodiscard]] int defaultScreenNumber();

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <source_location>
#include <string_view>

namespace tunedeck {

/// Ends the program after a programming error: a missing resource of its own, an impossible enumeration value. Prints
/// `what` and the place in the source on standard error, then aborts. Input from outside the program (a player, a
/// file, the network, a setting) must never lead here.
[[noreturn]] void fatalError(
    std::string_view what, const std::source_location &where = std::source_location::current());

} // namespace tunedeck

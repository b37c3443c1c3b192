// SPDX-License-Identifier: MIT
#pragma once

#include <source_location>
#include <string_view>

namespace tunedeck {

/// Ends the program for a programming error: a missing resource of our own, an impossible enumeration value.
/// Says `what` and the place on standard error, then aborts. Nothing that comes from outside the program (a player,
/// a file, the network, a setting) may lead here.
[[noreturn]] void fatalError(
    std::string_view what, const std::source_location &where = std::source_location::current());

} // namespace tunedeck

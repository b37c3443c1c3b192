// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace tunedeck {

/// A moment of the monotonic clock. Classes that judge by time get it as an argument, so that a test can play minutes
/// in no time.
using Instant = std::chrono::steady_clock::time_point;
using Milliseconds = std::chrono::milliseconds;
/// Gives the present moment: the monotonic clock, or a test's own clock that can skip time.
using Clock = std::function<Instant()>;

[[nodiscard]] inline double secondsBetween(Instant from, Instant to)
{
    return std::chrono::duration<double>(to - from).count();
}

} // namespace tunedeck

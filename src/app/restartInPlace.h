// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// Replaces this process by a new run of the program, without arguments. The process stays the same because a desktop
/// may end everything that a process started when it ends. No destructors run. Returns only on failure.
void restartInPlace();

} // namespace tunedeck

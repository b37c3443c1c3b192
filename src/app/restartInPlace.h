// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// Starts the program again in this same process, without arguments. A desktop may end all programs that a process
/// started as soon as that process ends, so this starts no new process. No destructors run. Returns only on failure.
void restartInPlace();

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// Begins the program again in this very process, without arguments: a desktop may take the end of a process for the
/// end of all that it started. Nothing that is left in this process is destroyed. Returns only where that fails.
void startAnew();

} // namespace tunedeck

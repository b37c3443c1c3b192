// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// Whether the desktop shows through the transparent parts of a window. On an X11 screen without a compositor they are
/// black. Always true on other window systems.
[[nodiscard]] bool isScreenComposited();

} // namespace tunedeck

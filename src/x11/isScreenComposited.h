// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// Whether what is see-through in a window lets the desktop show. On an X11 screen without a compositor it is black.
[[nodiscard]] bool isScreenComposited();

} // namespace tunedeck

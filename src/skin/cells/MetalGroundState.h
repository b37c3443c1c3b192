// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// What the metal of the window and of the drawer depends on.
struct MetalGroundState {
    bool isMainWindow = false;
    bool isKeptAboveAllOthers = false;

    bool operator==(const MetalGroundState &) const = default;
};

} // namespace tunedeck

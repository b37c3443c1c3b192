// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// The state that the look of the window's and the drawer's metal depends on.
struct MetalGroundState {
    bool isMainWindow = false;
    bool isKeptAboveAllOthers = false;

    /// A window that stays on top looks active even while it is not.
    [[nodiscard]] bool looksActive() const { return isMainWindow || isKeptAboveAllOthers; }

    bool operator==(const MetalGroundState &) const = default;
};

} // namespace tunedeck

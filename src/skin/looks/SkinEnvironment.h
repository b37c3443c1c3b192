// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

class Appearance;
class UserDefaults;
class WindowActivation;

/// What the looks of a skinned view depend on besides its own state; all must outlive the view.
struct SkinEnvironment {
    const UserDefaults &defaults;
    const Appearance &appearance;
    const WindowActivation &windowActivation;
};

} // namespace tunedeck

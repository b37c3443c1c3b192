// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

class Appearance;
class UserDefaults;
class WindowActivation;

/// All that the look of a skinned view depends on besides its own state. All must outlive the view.
struct SkinEnvironment {
    const UserDefaults &defaults;
    const Appearance &appearance;
    const WindowActivation &windowActivation;
};

} // namespace tunedeck

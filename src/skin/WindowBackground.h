// SPDX-License-Identifier: MIT
#pragma once

#include "skin/MetalGround.h"
#include "skin/WindowBackgroundCell.h"

namespace tunedeck {

/// The metal of the main window.
class WindowBackground : public MetalGround<WindowBackgroundCell> {
    Q_OBJECT

public:
    using MetalGround::MetalGround;
};

} // namespace tunedeck

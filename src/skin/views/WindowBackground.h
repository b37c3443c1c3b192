// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/WindowBackgroundCell.h"
#include "skin/views/MetalGround.h"

namespace tunedeck {

/// The metal of the main window.
class WindowBackground : public MetalGround<WindowBackgroundCell> {
    Q_OBJECT

public:
    using MetalGround::MetalGround;
};

} // namespace tunedeck

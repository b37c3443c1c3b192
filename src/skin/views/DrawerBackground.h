// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/DrawerBackgroundCell.h"
#include "skin/views/MetalGround.h"

namespace tunedeck {

/// The metal of the drawer, with its inset field.
class DrawerBackground : public MetalGround<DrawerBackgroundCell> {
    Q_OBJECT

public:
    using MetalGround::MetalGround;
};

} // namespace tunedeck

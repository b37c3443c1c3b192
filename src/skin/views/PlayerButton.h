// SPDX-License-Identifier: MIT
#pragma once

#include "skin/views/RoundButton.h"
#include "skin/views/SkinnedButton.h"

namespace tunedeck {

/// The large round button that plays and pauses.
class PlayerButton : public RoundButton<SkinnedButton, PlayerButtonCell> {
    Q_OBJECT

public:
    using RoundButton::RoundButton;
};

} // namespace tunedeck

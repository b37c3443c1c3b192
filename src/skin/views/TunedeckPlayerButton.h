// SPDX-License-Identifier: MIT
#pragma once

#include "skin/views/HoldableButton.h"
#include "skin/views/RoundButton.h"

namespace tunedeck {

/// A round button that skips when clicked and seeks while held.
class TunedeckPlayerButton : public RoundButton<HoldableButton, TunedeckPlayerButtonCell> {
    Q_OBJECT

public:
    using RoundButton::RoundButton;
};

} // namespace tunedeck

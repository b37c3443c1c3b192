// SPDX-License-Identifier: MIT
#pragma once

#include "skin/views/MetalButton.h"

namespace tunedeck {

/// A metal button with an engraved image, and never with a title. The program creates none; the gallery shows how its
/// cell looks.
class MetalGlyphButton : public MetalButton {
    Q_OBJECT

public:
    using MetalButton::MetalButton;

protected:
    void drawFace(QPainter &painter, const MetalButtonState &state) const override;
};

} // namespace tunedeck

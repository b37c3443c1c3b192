// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/AuxiliaryButtonCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/SkinnedButton.h"

namespace tunedeck {

/// A small olive button with a play triangle, 12 points wide and 11 high. The program creates none; the gallery shows
/// how its cell looks.
class AuxiliaryButton : public SkinnedButton {
    Q_OBJECT

public:
    explicit AuxiliaryButton(const SkinEnvironment &environment, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AuxiliaryButtonCell m_cell;
    FaceCache<AuxiliaryButtonState> m_faces;
};

} // namespace tunedeck

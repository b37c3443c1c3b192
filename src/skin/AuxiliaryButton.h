// SPDX-License-Identifier: MIT
#pragma once

#include "skin/AuxiliaryButtonCell.h"
#include "skin/FaceCache.h"
#include "skin/SkinEnvironment.h"
#include "skin/SkinnedButton.h"

namespace tunedeck {

/// A small olive button that plays, 12 points wide and 11 high.
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

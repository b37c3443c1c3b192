// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/FocusMark.h"

namespace tunedeck {

/// A small lamp in the metal, below the middle of a control that has no ring around it.
class FocusLamp : public FocusMark {
    Q_OBJECT

public:
    explicit FocusLamp(QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds = {});

protected:
    [[nodiscard]] QRectF area(const QRectF &control) const override;
    void paint(QPainter &painter, const QRectF &control) const override;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/FocusMark.h"

namespace tunedeck {

/// Two arrowheads of the display's ink that point at a control on the display from its left and its right.
class FocusPointers : public FocusMark {
    Q_OBJECT

public:
    explicit FocusPointers(QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds = {});

protected:
    [[nodiscard]] QRectF area(const QRectF &control) const override;
    void paint(QPainter &painter, const QRectF &control) const override;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/FocusMark.h"

#include <QPainterPath>

#include <optional>

namespace tunedeck {

/// A thin ring around a control.
class FocusRing : public FocusMark {
    Q_OBJECT

public:
    /// `cornerRadius` is that of what the control draws, in points; half of the height if not given.
    explicit FocusRing(QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds = {},
        std::optional<double> cornerRadius = {});

protected:
    [[nodiscard]] QRectF area(const QRectF &control) const override;
    void paint(QPainter &painter, const QRectF &control) const override;

private:
    [[nodiscard]] QPainterPath band(const QRectF &control, double start, double end) const;
    [[nodiscard]] QPainterPath outline(const QRectF &control, double distance) const;

    std::optional<double> m_cornerRadius;
};

} // namespace tunedeck

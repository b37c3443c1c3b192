// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"

#include <QObject>
#include <QPointer>
#include <QRectF>

#include <functional>
#include <optional>

class QFocusEvent;
class QWidget;

namespace tunedeck {

/// The outline of what a control draws.
struct ControlOutline {
    /// The bounds within the control's rectangle, in points; the whole rectangle if not given.
    std::function<QRectF(const QRectF &control)> bounds = {};
    /// The radius of the corners in points; half of the height if not given.
    std::optional<double> cornerRadius = {};
};

/// Shows a thin ring around a control that has the keyboard focus because the user went there with Tab, but not after a
/// click or from the start. The ring is a child of the control's parent, outside the outline that the control draws.
class FocusRing : public QObject {
    Q_OBJECT

public:
    /// Belongs to `control`.
    FocusRing(QWidget &control, const SkinEnvironment &environment, const ControlOutline &outline = {});
    ~FocusRing() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void focusIn(const QFocusEvent &event);
    void focusOut(const QFocusEvent &event);
    void show();
    void follow();

    QWidget &m_control;
    SkinEnvironment m_environment;
    ControlOutline m_outline;
    QPointer<QWidget> m_ring;
    bool m_cameByTab = false;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"

#include <QObject>
#include <QPointer>
#include <QRectF>

#include <optional>

class QFocusEvent;
class QWidget;

namespace tunedeck {

/// The outline of what a control draws.
struct ControlOutline {
    /// Its bounds in the rectangle of the control; all of that if not given. In points, as is the rest.
    QRectF (*bounds)(const QRectF &control) = nullptr;
    /// How far its corners are rounded: by half of its height if not given.
    std::optional<double> cornerRadius = {};
};

/// Shows a thin ring around a control while the control has the keyboard because the user went there with Tab. A click
/// needs none, nor does what has the keyboard from the start. The ring lies in the control's parent, outside of what
/// the control draws.
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

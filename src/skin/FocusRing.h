// SPDX-License-Identifier: MIT
#pragma once

#include "SkinEnvironment.h"

#include <QObject>
#include <QPointer>

#include <optional>

class QFocusEvent;
class QWidget;

namespace tunedeck {

/// Shows a thin ring around a control while the control has the keyboard because the user went there with Tab. A click
/// needs none, nor does what has the keyboard from the start. The ring lies in the control's parent, outside of what
/// the control draws.
class FocusRing : public QObject {
    Q_OBJECT

public:
    /// Belongs to `control`.
    FocusRing(QWidget &control, const SkinEnvironment &environment);
    /// Of a control that draws no more than `drawnHeight` points, halfway down.
    FocusRing(QWidget &control, const SkinEnvironment &environment, int drawnHeight);
    ~FocusRing() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void focusIn(const QFocusEvent &event);
    void focusOut(const QFocusEvent &event);
    void show();
    void follow();

    QWidget &m_control;
    SkinEnvironment m_environment;
    std::optional<int> m_drawnHeight;
    QPointer<QWidget> m_ring;
    bool m_cameByTab = false;
};

} // namespace tunedeck

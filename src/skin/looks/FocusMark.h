// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"

#include <QObject>
#include <QPointer>
#include <QRectF>

#include <functional>

class QFocusEvent;
class QPainter;
class QWidget;

namespace tunedeck {

/// Gives the bounds of what a control draws within the control's rectangle, in points. An empty function stands for the
/// whole rectangle.
using DrawnBounds = std::function<QRectF(const QRectF &control)>;

/// Shows where the keyboard is: beside a control that has the keyboard focus because the user went there with a key,
/// but not after a click or from the start. The mark is a child of the control's parent, behind the control, and takes
/// no clicks. Derived classes draw it.
class FocusMark : public QObject {
    Q_OBJECT

public:
    ~FocusMark() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    /// Belongs to `control`.
    FocusMark(QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds);

    [[nodiscard]] const SkinEnvironment &environment() const { return m_environment; }
    /// The area of the mark, in points. `control` is what the control draws.
    [[nodiscard]] virtual QRectF area(const QRectF &control) const = 0;
    /// Draws the mark. `control` is what the control draws, in the painter's coordinates and points.
    virtual void paint(QPainter &painter, const QRectF &control) const = 0;

private:
    class View;

    [[nodiscard]] QRectF drawnControl() const;
    void focusIn(const QFocusEvent &event);
    void focusOut(const QFocusEvent &event);
    void show();
    void follow();

    QWidget &m_control;
    SkinEnvironment m_environment;
    DrawnBounds m_bounds;
    QPointer<QWidget> m_view;
    bool m_cameByKey = false;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace tunedeck {

/// Notices that a control, on which the left mouse button was pressed, cannot count on the release any more: a menu
/// that has opened meanwhile gets it, or has closed again and perhaps taken it along, Qt gives it to no control, or the
/// window is no longer on a screen.
class MissedRelease : public QObject {
    Q_OBJECT

public:
    /// `control` must outlive this object.
    explicit MissedRelease(QWidget &control);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The control is not pressed any more. Also emitted if the control has ignored the press.
    void missed();

private:
    void handleRelease(const QObject &watched);
    [[nodiscard]] bool isWindowGone(const QObject &watched) const;
    void watch();
    void stop();
    void miss();

    QWidget &m_control;
    QTimer m_soon;
};

} // namespace tunedeck

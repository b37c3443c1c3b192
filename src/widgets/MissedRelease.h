// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace tunedeck {

/// Notices that the left mouse button, which was pressed on a control, is released without the control getting the
/// release: a menu that has opened meanwhile gets it, or no one, because such a menu has closed again or the window is
/// no longer on a screen.
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
    QTimer m_undelivered; ///< ends when a widget gets the release that the native window has got
};

} // namespace tunedeck

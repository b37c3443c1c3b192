// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

/// The group of the window's buttons. It reports whether the pointer is over the group, also while the program is not
/// active.
class WindowButtonsView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool mouseHovering READ mouseHovering NOTIFY mouseHoveringChanged)

public:
    using QWidget::QWidget;

    [[nodiscard]] bool mouseHovering() const { return m_mouseHovering; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void mouseHoveringChanged(bool isHovering);

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void endHovering();
    void setMouseHovering(bool isHovering);

    bool m_mouseHovering = false;
};

} // namespace tunedeck

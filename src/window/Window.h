// SPDX-License-Identifier: MIT
#pragma once

#include "window/WindowDrag.h"
#include "window/WindowShadow.h"

#include <QMargins>
#include <QRect>
#include <QSize>
#include <QTimer>
#include <QWidget>

namespace tunedeck {

class WindowController;

enum class WindowLevel { Normal = 0, Floating = 3 };

/// The player's one window: frameless, rounded, moved by its background and resized in width by its left and right
/// edges. It can be key and main like a window with a frame.
///
/// Where there is a compositor it casts a shadow around its content, in margins of its own that the window manager
/// knows of. The content is what the user takes for the window: its sizes are what the program speaks of.
class Window : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool shiftButtonHeld READ shiftButtonHeld NOTIFY shiftButtonHeldChanged)
    Q_PROPERTY(bool optionButtonHeld READ optionButtonHeld NOTIFY optionButtonHeldChanged)

public:
    static constexpr int minimumContentWidth = 350;
    static constexpr int maximumContentWidth = 550;

    /// `controller` must outlive the window.
    explicit Window(WindowController &controller);

    [[nodiscard]] WindowController &windowController() const;
    [[nodiscard]] bool shiftButtonHeld() const;
    [[nodiscard]] bool optionButtonHeld() const;
    [[nodiscard]] WindowLevel level() const;
    void setLevel(WindowLevel level);

    /// Where the content is in the window, in points.
    [[nodiscard]] QRect contentRect() const;
    void resizeContent(QSize size);
    /// Within which the user may resize the content.
    void setContentSizeLimits(QSize minimum, QSize maximum);
    /// Takes `view`, which from now on fills the content.
    void setContentView(QWidget *view);

    void flagsChanged(Qt::KeyboardModifiers modifiers);
    /// Escape and Ctrl+Period: puts the drawer away, or beeps where there is none to put away.
    void cancelOperation();
    void makeKeyAndOrderFront();
    /// Lets the shadow follow the window's outline. Where there is no compositor, the window is cut to its outline, so
    /// that its corners are not black.
    void invalidateShadow();

public Q_SLOTS:
    /// To the greatest width, or from there back to the width before.
    void zoom();

Q_SIGNALS:
    void shiftButtonHeldChanged(bool held);
    void optionButtonHeldChanged(bool held);
    /// Whether any of it is on a screen: not while it is hidden, minimised or, where the desktop tells, covered.
    void canBeSeenChanged(bool canBeSeen);

protected:
    bool event(QEvent *event) override;
    /// Watches the native window, where every key and every move of the pointer arrives whatever child it is for.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void watchScreen();
    void applyScaleOfScreen();
    void setShadowMargins(const QMargins &margins);
    void applySizeLimits();
    void cutToOutline();
    void updateCanBeSeen();
    void leaveStatesThatFillTheScreen();
    void confirmMinimisation();
    void updateInputRegion();
    void applyLevel();

    WindowController &m_controller;
    QWidget *m_contentView = nullptr;
    bool m_shiftButtonHeld = false;
    bool m_optionButtonHeld = false;
    WindowLevel m_level = WindowLevel::Normal;
    bool m_isComposited = true;
    WindowShadow m_shadow;
    QMargins m_shadowMargins;
    QSize m_minimumContentSize;
    QSize m_maximumContentSize{QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
    bool m_canBeSeen = false;
    bool m_hasBeenSeen = false;
    int m_widthBeforeZoom;
    WindowDrag m_drag{*this};
    QTimer m_minimisation;
};

} // namespace tunedeck

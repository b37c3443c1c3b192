// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/WindowDrag.h"
#include "window/WindowShadow.h"

#include <QMargins>
#include <QRect>
#include <QSize>
#include <QTimer>
#include <QWidget>

namespace tunedeck {

class WindowController;

/// Floating is Qt's "stays on top".
enum class WindowLevel { Normal = 0, Floating = 3 };

/// The player's one window: frameless, rounded, moved by its background and resized in width by its left and right
/// edges. Like a window with a frame, it can be key and main (see WindowActivation).
///
/// It draws its shadow in margins around its content where a compositor runs, and tells the window manager how wide
/// they are. Users see the content as the window. All sizes here are in points, and those of the content unless a name
/// says otherwise.
class Window : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool shiftButtonHeld READ shiftButtonHeld NOTIFY shiftButtonHeldChanged)
    Q_PROPERTY(bool optionButtonHeld READ optionButtonHeld NOTIFY optionButtonHeldChanged)

public:
    static constexpr int minimumContentWidth = 350;
    static constexpr int maximumContentWidth = 550;

    /// `controller` must outlive the window.
    explicit Window(WindowController &controller);

    [[nodiscard]] WindowController &windowController() const { return m_controller; }
    [[nodiscard]] bool shiftButtonHeld() const { return m_shiftButtonHeld; }
    /// Option is the Alt key.
    [[nodiscard]] bool optionButtonHeld() const { return m_optionButtonHeld; }
    [[nodiscard]] WindowLevel level() const { return m_level; }
    void setLevel(WindowLevel level);

    /// The content's place in the window.
    [[nodiscard]] QRect contentRect() const;
    /// The content's place on the screen. On Wayland, only its size is right.
    [[nodiscard]] QRect contentGeometry() const;
    void setContentGeometry(const QRect &place);
    void resizeContent(QSize size);
    /// Limits the sizes that the user can give to the content.
    void setContentSizeLimits(QSize minimum, QSize maximum);
    /// Takes ownership of `view`, which fills the content from now on.
    void setContentView(QWidget *view);

    /// The modifier keys that are held down have changed.
    void flagsChanged(Qt::KeyboardModifiers modifiers);
    /// Escape and Ctrl+Period: closes the drawer, or beeps if it is closed.
    void cancelOperation();
    /// Brings the window to the front and gives it the keyboard focus.
    void makeKeyAndOrderFront();
    /// Fits the shadow to the window's outline. Without a compositor, cuts the window to its outline instead, so that
    /// its corners are not black.
    void invalidateShadow();

public Q_SLOTS:
    /// Gives the window its greatest width, or if it has that, the width before.
    void zoom();

Q_SIGNALS:
    void shiftButtonHeldChanged(bool held);
    void optionButtonHeldChanged(bool held);
    void levelChanged(tunedeck::WindowLevel level);
    /// Whether any part of the window is on a screen. It is not while the window is hidden, minimised or, on desktops
    /// that report it, covered.
    void canBeSeenChanged(bool canBeSeen);

protected:
    bool event(QEvent *event) override;
    /// Watches the native window, which receives the keys and the pointer's moves for all child widgets.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void updateFlags(Qt::KeyboardModifiers modifiers);
    void watchScreen();
    void applyScaleOfScreen();
    void setShadowMargins(const QMargins &margins);
    void applySizeLimits();
    void cutToOutline();
    void updateCanBeSeen();
    void leaveStatesThatFillTheScreen();
    void watchMinimisation();
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

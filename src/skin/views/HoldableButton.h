// SPDX-License-Identifier: MIT
#pragma once

#include "skin/views/SkinnedButton.h"

#include <QTimer>

#include <chrono>

namespace tunedeck {

/// A push button that distinguishes a click from a hold. As a hold button it is clicked when the mouse, or the key that
/// presses buttons, is released before `holdThreshold` has passed; after that it is held until the release, and is not
/// clicked. A hold by the keyboard also ends where the keyboard goes elsewhere.
///
/// Until setHoldButton(true) it is a plain button that also reports when it is pressed.
class HoldableButton : public SkinnedButton {
    Q_OBJECT
    Q_PROPERTY(bool isHoldButton READ isHoldButton WRITE setHoldButton NOTIFY isHoldButtonChanged)
    Q_PROPERTY(bool isIntentionallyHeld READ isIntentionallyHeld NOTIFY isIntentionallyHeldChanged)
    Q_PROPERTY(bool isHeld READ isHeld NOTIFY isHeldChanged)

public:
    static constexpr std::chrono::milliseconds holdThreshold{600};

    explicit HoldableButton(QWidget *parent = nullptr);

    [[nodiscard]] bool isHoldButton() const { return m_isHoldButton; }
    void setHoldButton(bool isHoldButton);
    [[nodiscard]] bool isIntentionallyHeld() const { return m_isIntentionallyHeld; }
    /// Whether the mouse button, or on a hold button a key, is down on this button.
    [[nodiscard]] bool isHeld() const { return m_holder != Holder::None; }

    /// Called when the hold threshold has passed.
    void fireTimer();

Q_SIGNALS:
    void isHoldButtonChanged(bool isHoldButton);
    /// Emitted after every assignment, also of an equal value: a plain click reports false.
    void isIntentionallyHeldChanged(bool isIntentionallyHeld);
    void isHeldChanged(bool isHeld);

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void cancelPress() override;

private:
    enum class Holder { None, Mouse, Key };

    void setIntentionallyHeld(bool isIntentionallyHeld);
    void setHolder(Holder holder);
    void beginPress();
    void finishPress(bool isClick);
    void endPress();
    void cancelPressByKey();

    bool m_isHoldButton = false;
    bool m_isIntentionallyHeld = false;
    Holder m_holder = Holder::None;
    int m_heldKey = 0;
    QTimer m_timer{this};
};

} // namespace tunedeck

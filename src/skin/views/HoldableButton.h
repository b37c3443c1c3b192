// SPDX-License-Identifier: MIT
#pragma once

#include "skin/views/SkinnedButton.h"

#include <QTimer>

#include <chrono>

namespace tunedeck {

/// A push button that distinguishes a click from a hold. As a hold button it is clicked when the mouse is released
/// before `holdThreshold` has passed; after that it is held until the release, and is not clicked.
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
    /// Whether the mouse button is down on this button.
    [[nodiscard]] bool isHeld() const { return m_isHeld; }

    /// Called when the hold threshold has passed.
    void fireTimer();

Q_SIGNALS:
    void isHoldButtonChanged(bool isHoldButton);
    /// Emitted after every assignment, also of an equal value: a plain click reports false.
    void isIntentionallyHeldChanged(bool isIntentionallyHeld);
    void isHeldChanged(bool isHeld);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void cancelPress() override;

private:
    void setIntentionallyHeld(bool isIntentionallyHeld);
    void setHeld(bool isHeld);
    void beginPress();
    void endPress();

    bool m_isHoldButton = false;
    bool m_isIntentionallyHeld = false;
    bool m_isHeld = false;
    QTimer m_timer{this};
};

} // namespace tunedeck

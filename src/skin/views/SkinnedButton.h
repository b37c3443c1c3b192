// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

namespace tunedeck {

/// What all buttons of the skin have in common, whatever they look like.
///
/// A click does not take the keyboard, so that Space goes on playing and pausing after it; Tab does. The window is
/// never dragged by a button, not by a disabled one either.
class SkinnedButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit SkinnedButton(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
};

} // namespace tunedeck

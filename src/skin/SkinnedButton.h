// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

namespace tunedeck {

/// What all buttons of the skin have in common, whatever they look like.
///
/// A click does not take the keyboard, so that Space goes on playing and pausing after it; Tab does. A disabled button
/// swallows the mouse: the window is not dragged by it.
class SkinnedButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit SkinnedButton(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
};

} // namespace tunedeck

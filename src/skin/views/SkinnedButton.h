// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/MissedRelease.h"

#include <QAbstractButton>

namespace tunedeck {

/// The common base of all buttons of the skin.
///
/// A click does not take the keyboard focus, so Space still plays and pauses after it. Tab takes it. A button never
/// drags the window, not even while it is disabled.
class SkinnedButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit SkinnedButton(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    /// The button gets no release: the press ends without a click.
    virtual void cancelPress();

private:
    MissedRelease m_missedRelease{*this};
};

} // namespace tunedeck

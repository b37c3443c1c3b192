// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantAnimation>

class QWidget;

namespace tunedeck {

/// The animation of a window that changes its size. It takes as long as the window's style says, or no time at all if
/// the user wants reduced motion; without a duration only finished() is emitted.
class ResizeAnimation : public QVariantAnimation {
public:
    /// `window` must outlive the animation.
    explicit ResizeAnimation(const QWidget &window);

    void setMotionReduced(bool isReduced) { m_isMotionReduced = isReduced; }
    /// Starts the animation from one value to another of the same type.
    void run(const QVariant &from, const QVariant &to);

private:
    const QWidget &m_window;
    bool m_isMotionReduced = false;
};

} // namespace tunedeck

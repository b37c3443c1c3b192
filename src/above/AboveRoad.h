// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveWay.h"

#include <QObject>

namespace tunedeck {

/// A compositor's answer to a question of AboveRoad.
enum class AboveAnswer {
    Done,
    NoWindow, ///< the compositor does not show the window, or not yet
    Refused
};

/// Asks one kind of Wayland compositor to keep the program's main window above other windows. Waits for nothing, and
/// knows no deadline: a compositor that hangs never answers.
class AboveRoad : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual AboveWay way() const = 0;
    /// Asks the compositor to keep the window above others, or no longer to do so. Emits answered() once, perhaps
    /// before it returns. The question before must have been answered or abandoned.
    virtual void ask(bool isAbove) = 0;
    /// Gives up the question, if one is open, and leaves nothing behind in the compositor.
    virtual void abandon() = 0;

Q_SIGNALS:
    void answered(tunedeck::AboveAnswer answer);
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

class WindowActivation;

/// Whether a window of the program, whichever, is main, or is key, as far as its owner was told: false until the next
/// one becomes it, or, where one is already, until the event loop's next turn. While the status goes from one window to
/// another it is false for a moment.
class ActivationFlag : public QObject {
    Q_OBJECT

public:
    enum class Status { Main, Key };

    ActivationFlag(const WindowActivation &activation, Status status);

    [[nodiscard]] bool isSet() const { return m_isSet; }

Q_SIGNALS:
    /// Only on a real change.
    void changed();

private:
    void set(bool isSet);

    bool m_isSet = false;
};

} // namespace tunedeck

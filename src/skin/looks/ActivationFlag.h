// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

class WindowActivation;

/// Whether any window of the program is key or main (see WindowActivation). It is false at first. If a window has the
/// status already, the flag follows in the event loop's next turn. While the status goes from one window to another it
/// is false for a moment.
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

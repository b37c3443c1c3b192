// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

namespace tunedeck {

/// Notices that a session, a terminal or another program asks this one to end: SIGTERM, SIGHUP or SIGINT. Each ends the
/// program at once when it comes for the second time, in case the program does not respond. A signal that the process
/// ignored when it started is still ignored. At most one object may exist.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    /// Lets each of the signals end the program at once.
    ~TerminationSignals() override;

Q_SIGNALS:
    /// Emitted by the event loop, not in the signal's handler.
    void received();

private:
    QSocketNotifier *m_notifier; ///< owned by this object
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/Instant.h"
#include "support/elapse.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QList>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace tunedeck {

/// Makes Music's time pass at once, and brings it to the point from where nothing more follows by itself.
class MusicAtRest {
public:
    /// The clock for the Music that is to be brought to rest: the monotonic clock, ahead by what was skipped.
    [[nodiscard]] Clock clock() const
    {
        return [skipped = m_skipped] { return std::chrono::steady_clock::now() + *skipped; };
    }

    /// Lets every timer of `music` that fires once be over, and waits for the answer to every call. `connection` is the
    /// one that `music` uses. False if there is no end of it within five seconds. `left` goes on as it is.
    [[nodiscard]] bool isReached(
        const QObject &music, const QDBusConnection &connection, const QTimer *left = nullptr) const
    {
        QTimer tooLong;
        tooLong.setSingleShot(true);
        tooLong.start(std::chrono::seconds(5));
        while (tooLong.isActive() && roundTrip(connection)) {
            const QList<QPointer<QTimer>> timers = waiting(music, left);
            for (const QPointer<QTimer> &timer : timers) {
                if (timer) {
                    endWaitOf(*timer);
                }
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (waiting(music, left).isEmpty() && !hasUnansweredCall(music)) {
                return true;
            }
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return false;
    }

    /// Whether a call of `music` has not been answered yet.
    [[nodiscard]] static bool hasUnansweredCall(const QObject &music)
    {
        return !music.findChildren<QDBusPendingCallWatcher *>().isEmpty();
    }

    /// When the bus has answered, all that was sent over the connection before is on its way to the receivers, and all
    /// that they had sent has been taken by this thread's event loop.
    static bool roundTrip(const QDBusConnection &connection)
    {
        const QString bus = QStringLiteral("org.freedesktop.DBus");
        const QDBusMessage answer = connection.call(
            QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetId")));
        QCoreApplication::sendPostedEvents();
        return answer.type() == QDBusMessage::ReplyMessage;
    }

private:
    [[nodiscard]] static QList<QPointer<QTimer>> waiting(const QObject &music, const QTimer *left)
    {
        QList<QPointer<QTimer>> timers;
        const QList<QTimer *> all = music.findChildren<QTimer *>();
        for (QTimer *timer : all) {
            if (timer->isSingleShot() && timer->isActive() && timer != left) {
                timers.append(timer);
            }
        }
        return timers;
    }

    void endWaitOf(QTimer &timer) const
    {
        // What Music does then depends on the time; the other timers only delay a question to the player.
        const QStringList dependent{QStringLiteral("settleTimer"), QStringLiteral("underWayTimer")};
        if (dependent.contains(timer.objectName())) {
            *m_skipped += std::max(Milliseconds(0), timer.remainingTimeAsDuration());
        }
        elapse(timer);
    }

    std::shared_ptr<Milliseconds> m_skipped = std::make_shared<Milliseconds>(0);
};

} // namespace tunedeck

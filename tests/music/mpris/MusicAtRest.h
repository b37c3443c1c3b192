// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/BusCall.h"
#include "music/mpris/bus/Instant.h"
#include "support/elapse.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QList>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace tunedeck {

/// Ends Music's waits at once, until Music does nothing more by itself.
class MusicAtRest {
public:
    /// The clock for the Music that isReached() brings to rest: the monotonic clock, ahead by what was skipped.
    [[nodiscard]] Clock clock() const
    {
        return [skipped = m_skipped] { return std::chrono::steady_clock::now() + *skipped; };
    }

    /// Lets time go by on the clock alone: no timer ends.
    void skip(Milliseconds time) const { *m_skipped += time; }

    /// Lets every timer of `music` that fires once be over, and waits for the answer to every call. `connection` is the
    /// one that `music` uses. False if there is no end of it within `patience`. `left` goes on as it is.
    [[nodiscard]] bool isReached(
        const QObject &music, const QDBusConnection &connection, const QTimer *left = nullptr) const
    {
        QTimer tooLong;
        tooLong.setSingleShot(true);
        tooLong.start(patience);
        while (tooLong.isActive() && roundTrip(connection)) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            const QList<QPointer<QTimer>> timers = waiting(music, left);
            // Events that an elapsed timer posted have been delivered by now.
            if (timers.isEmpty() && !hasUnansweredCall(music)) {
                return true;
            }
            for (const QPointer<QTimer> &timer : timers) {
                // The timer before may have let an answer arrive. The signals before that answer are handled first.
                if (roundTrip(connection) && timer) {
                    endWaitOf(*timer);
                }
            }
            QCoreApplication::processEvents(
                hasUnansweredCall(music) ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
        }
        return false;
    }

    /// Whether a call of `music` has not been answered yet.
    [[nodiscard]] static bool hasUnansweredCall(const QObject &music)
    {
        return !music.findChildren<bus::PendingCall *>().isEmpty();
    }

    /// When the bus has answered, all that was sent over the connection before is on its way to the receivers, and all
    /// that they had sent has been taken by this thread's event loop.
    static bool roundTrip(const QDBusConnection &connection)
    {
        const QString bus = QStringLiteral("org.freedesktop.DBus");
        const QDBusMessage answer = connection.call(
            QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetId")));
        // Earlier messages are unpacked on the thread that reads the connection.
        if (QDBusConnectionInterface *reader = connection.interface()) {
            QMetaObject::invokeMethod(reader, [] { }, Qt::BlockingQueuedConnection);
        }
        QCoreApplication::sendPostedEvents();
        return answer.type() == QDBusMessage::ReplyMessage;
    }

private:
#if defined(__SANITIZE_THREAD__)
    static constexpr std::chrono::seconds patience{30};
#else
    static constexpr std::chrono::seconds patience{5};
#endif

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
        // Music looks at the clock when these timers end. The others only delay a question to the player.
        const QStringList dependent{QStringLiteral("settleTimer"), QStringLiteral("underWayTimer")};
        if (dependent.contains(timer.objectName())) {
            *m_skipped += std::max(Milliseconds(0), timer.remainingTimeAsDuration());
        }
        elapse(timer);
    }

    std::shared_ptr<Milliseconds> m_skipped = std::make_shared<Milliseconds>(0);
};

} // namespace tunedeck

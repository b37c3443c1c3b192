// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/Instant.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <functional>

namespace tunedeck::bus {

/// The answer to a call. A player's arguments are plain (see plainValue()), those of the bus itself as they came.
struct Answer {
    QVariantList arguments = {};
    QDBusError::ErrorType error = QDBusError::NoError;
    QString errorName = {};
    QString errorMessage = {}; ///< cut at maximumTextLength

    [[nodiscard]] bool isError() const { return error != QDBusError::NoError; }
    /// Whether the deadline passed without an answer.
    [[nodiscard]] bool isUnanswered() const;
    /// Whether the bus, or Qt, says in the recipient's place that the call does not reach it. Qt 6.8 does not tell who
    /// sent an answer. A player that gives one of their errors is taken for them.
    [[nodiscard]] bool isUndelivered() const;
    [[nodiscard]] QVariant argument(qsizetype index) const { return arguments.value(index); }
};

using AnswerHandler = std::function<void(const Answer &answer)>;

/// Time that the bus and every player get to answer a call.
inline constexpr Milliseconds deadline{1'000};

/// A call of a player's method. It never starts a program.
[[nodiscard]] QDBusMessage playerCall(
    const QString &owner, const QString &interface, const QString &method, const QVariantList &arguments = {});
/// A call of a method of the bus itself.
[[nodiscard]] QDBusMessage daemonCall(const QString &method, const QVariantList &arguments = {});

/// A call that has not been answered yet. It ends with its parent or with the answer.
class PendingCall : public QObject {
    Q_OBJECT

public:
    PendingCall(const QDBusConnection &connection, const QDBusMessage &call, Milliseconds patience, QObject *parent);
    ~PendingCall() override;

Q_SIGNALS:
    void answered(const tunedeck::bus::Answer &answer);

private:
    QObject *m_reader; ///< on the thread that reads the connection, where it is deleted
};

/// Sends `call` and returns at once. `handler` is called on this thread with the answer, or not at all if `context` is
/// deleted first; `context` must be on this thread. `patience` is the time until the error NoReply.
void send(const QDBusConnection &connection, const QDBusMessage &call, QObject *context, const AnswerHandler &handler,
    Milliseconds patience = deadline);

} // namespace tunedeck::bus

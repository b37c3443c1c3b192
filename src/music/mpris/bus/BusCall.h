// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/Instant.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>

#include <functional>

class QObject;

namespace tunedeck::bus {

using ReplyHandler = std::function<void(const QDBusMessage &reply)>;

/// Time that the bus and every player get to answer a call.
inline constexpr Milliseconds deadline{1'000};

/// A call of a player's method. It never starts a program.
[[nodiscard]] QDBusMessage playerCall(
    const QString &owner, const QString &interface, const QString &method, const QVariantList &arguments = {});
/// A call of a method of the bus itself.
[[nodiscard]] QDBusMessage daemonCall(const QString &method, const QVariantList &arguments = {});

/// Sends `call` and returns at once. `handler` is called on the thread of `context` with the reply or the error, or not
/// at all if `context` is deleted first. `patience` is the time until the error NoReply.
void send(const QDBusConnection &connection, const QDBusMessage &call, QObject *context, const ReplyHandler &handler,
    Milliseconds patience = deadline);

[[nodiscard]] bool isError(const QDBusMessage &reply);
/// Whether the deadline passed without an answer.
[[nodiscard]] bool isUnanswered(const QDBusError &error);

} // namespace tunedeck::bus

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/BusReader.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantList>

namespace tunedeck {

class CallReader;

/// The calls of other programs of an object on the bus. They are received, and released, on the thread that reads the
/// bus. A call with more than 10,000 values or a million characters or bytes is refused there, and so are calls while
/// 64 wait for this thread.
class IncomingCalls : public QObject {
    Q_OBJECT

public:
    /// `introspection` is the XML of the interfaces of the object at `path`.
    IncomingCalls(
        const QDBusConnection &bus, const QString &path, const QString &introspection, QObject *parent = nullptr);
    ~IncomingCalls() override;

    // Answer or refuse each call once, at any time. Nothing is sent to a caller that does not wait.

    void answer(const QDBusMessage &call, const QVariantList &values = {});
    void refuse(const QDBusMessage &call, const QString &error, const QString &reason);
    void refuse(const QDBusMessage &call, QDBusError::ErrorType error, const QString &reason);

Q_SIGNALS:
    void called(const QDBusMessage &call);

private:
    void handle(const QDBusMessage &call);

    QDBusConnection m_bus;
    const QString m_path;
    const BusReader<CallReader> m_reader;
};

} // namespace tunedeck

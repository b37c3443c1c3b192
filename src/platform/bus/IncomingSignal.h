// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/BusReader.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantList>

namespace tunedeck {

class SignalReader;

/// One signal of an object on the bus. It is received, unpacked and released on the thread that reads the bus.
class IncomingSignal : public QObject {
    Q_OBJECT

public:
    struct Origin {
        QString sender; ///< its unique name; empty for any sender
        QString path;
        QString interface;
        QString name;
    };

    /// `signature` is that of the signal's values. `bus` must be connected.
    IncomingSignal(
        const QDBusConnection &bus, const Origin &origin, const QString &signature, QObject *parent = nullptr);
    ~IncomingSignal() override;

Q_SIGNALS:
    /// `values` are Booleans, numbers, texts of 1,000 characters at most (paths, too), and QVariantMaps of these;
    /// anything else is an invalid QVariant. The list is empty if the signal has another signature, or more than 10,000
    /// values or a million characters and bytes. Signals that come while 64 wait for this thread are dropped.
    void came(const QString &sender, const QVariantList &values);

private:
    void handle(const QString &sender, const QVariantList &values);

    QDBusConnection m_bus;
    const Origin m_origin;
    const BusReader<SignalReader> m_reader;
};

} // namespace tunedeck

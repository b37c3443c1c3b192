// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/BusReader.h"

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace tunedeck {

class PortalReader;

/// A setting of the desktop portal.
struct PortalKey {
    QString group;
    QString key;

    bool operator==(const PortalKey &) const = default;
};

/// Reads settings of the desktop portal (org.freedesktop.portal.Settings) and follows their changes. What comes is
/// received, unpacked and released on the thread that reads the bus. Of several changes that come at once, only the
/// last of each setting is reported.
class PortalSettings : public QObject {
    Q_OBJECT

public:
    /// Asks for all of `keys`. That may start the portal, and never waits for it.
    PortalSettings(const QDBusConnection &bus, const QList<PortalKey> &keys, QObject *parent = nullptr);
    ~PortalSettings() override;

Q_SIGNALS:
    /// `value` is a Boolean, an unsigned integer, a double, a text of 1,000 characters at most, or a QVariantList of
    /// the three doubles of a colour. It is invalid if the portal, or any program in its name, sends something else.
    void read(const tunedeck::PortalKey &key, const QVariant &value);
    /// The portal does not say. `reason` has 200 characters at most.
    void failed(const tunedeck::PortalKey &key, const QString &reason);

private:
    void reportAll();

    QDBusConnection m_bus;
    const QStringList m_groups;
    const BusReader<PortalReader> m_reader;
};

} // namespace tunedeck

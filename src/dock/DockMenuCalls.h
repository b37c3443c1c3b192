// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/IncomingCalls.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

namespace tunedeck {

class DockMenuServer;

/// Answers what docks ask over com.canonical.dbusmenu.
class DockMenuCalls : public QObject {
    Q_OBJECT

public:
    /// `server` must outlive this object.
    DockMenuCalls(const QDBusConnection &bus, const QString &path, DockMenuServer &server);

private:
    using Values = std::optional<QVariantList>; ///< none if there is no such method

    void handle(const QDBusMessage &call);
    [[nodiscard]] Values menuAnswer(const QString &method, const QVariantList &arguments);
    [[nodiscard]] Values eventAnswer(const QString &method, const QVariantList &arguments);
    [[nodiscard]] Values propertyAnswer(const QString &method, const QVariantList &arguments) const;
    [[nodiscard]] QVariantMap properties() const;

    DockMenuServer &m_server;
    IncomingCalls m_calls;
};

} // namespace tunedeck

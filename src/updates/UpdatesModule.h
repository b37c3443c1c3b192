// SPDX-License-Identifier: MIT
#pragma once

#include <QtPlugin>

#include <functional>

class QDBusConnection;

namespace tunedeck {

/// What the program loads when the user first asks for an update: a module with the updater, the network and its
/// cryptography, which cost the program nothing before.
class UpdatesModule {
public:
    virtual ~UpdatesModule() = default;

    /// Checks for updates on each call. What it has under way ends with it.
    using Check = std::function<void()>;
    /// `bus` always tells of the bus that is, and must outlive the check.
    [[nodiscard]] virtual Check makeCheck(const QDBusConnection &bus) const = 0;
};

/// A program loads no module of another version: this begins the module's interface identifier, the program's version
/// ends it.
#define TUNEDECK_UPDATES_MODULE "org.tunedeck.UpdatesModule/"

} // namespace tunedeck

Q_DECLARE_INTERFACE(tunedeck::UpdatesModule, TUNEDECK_UPDATES_MODULE)

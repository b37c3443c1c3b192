// SPDX-License-Identifier: MIT
#pragma once

#include <QtPlugin>

#include <functional>

class QDBusConnection;

namespace tunedeck {

class UserDefaults;

/// A module with the updater. The program loads it when the user first asks for an update, so that the libraries for
/// the network and for cryptography do not slow its start.
class UpdatesModule {
public:
    virtual ~UpdatesModule() = default;

    /// Checks for updates on each call. Destroying it stops a check that is under way.
    using Check = std::function<void()>;
    /// `bus` always refers to the current bus. It and `settings` must outlive the check.
    [[nodiscard]] virtual Check makeCheck(const QDBusConnection &bus, UserDefaults &settings) const = 0;
};

/// The beginning of the module's interface identifier. The program's version is its end, so that the program loads no
/// module of another version.
#define TUNEDECK_UPDATES_MODULE "org.tunedeck.UpdatesModule/"

} // namespace tunedeck

Q_DECLARE_INTERFACE(tunedeck::UpdatesModule, TUNEDECK_UPDATES_MODULE)

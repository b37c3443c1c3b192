// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdatesModule.h"

#include <QObject>

namespace tunedeck {

/// A module that a program of an earlier version has left behind.
class OtherVersionModule : public QObject, public UpdatesModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TUNEDECK_UPDATES_MODULE "0.0.1")
    Q_INTERFACES(tunedeck::UpdatesModule)

public:
    [[nodiscard]] Check makeCheck(const QDBusConnection &bus, UserDefaults &settings) const override;
};

} // namespace tunedeck

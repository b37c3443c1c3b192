// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdatesModule.h"

#include <QObject>

namespace tunedeck {

/// The module with the feed's address and the public key that the build was configured with.
class StandardUpdatesModule : public QObject, public UpdatesModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TUNEDECK_UPDATES_MODULE TUNEDECK_VERSION)
    Q_INTERFACES(tunedeck::UpdatesModule)

public:
    [[nodiscard]] Check makeCheck(const QDBusConnection &bus, UserDefaults &settings) const override;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveRoad.h"

#include <QProcessEnvironment>

#include <memory>

class QDBusConnection;

namespace tunedeck {

/// The road to the compositor that `environment` names; null if there is none to it, or if nobody listens there. Asks
/// nothing yet. `bus` must outlive the road.
[[nodiscard]] std::unique_ptr<AboveRoad> aboveRoadOfSession(
    const QDBusConnection &bus, const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

} // namespace tunedeck

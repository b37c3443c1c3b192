// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QDBusError;

namespace tunedeck {

/// How a request to a portal ended.
enum class PortalAnswer {
    Granted,
    Declined, ///< the user or the desktop says no
    Missing, ///< this desktop has no portal, or its portal has no such request
    Failed, ///< an answer that makes no sense, or none in time
};

/// The answer that the error of a call means. No value if the portal itself has refused the call.
[[nodiscard]] std::optional<PortalAnswer> answerWithoutPortal(const QDBusError &error);

} // namespace tunedeck

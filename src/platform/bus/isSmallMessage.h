// SPDX-License-Identifier: MIT
#pragma once

class QDBusMessage;

namespace tunedeck {

/// Whether a message that has come has no more than 10,000 values and containers, with a million characters and bytes
/// in all. What is beyond that is not looked at.
[[nodiscard]] bool isSmallMessage(const QDBusMessage &message);

} // namespace tunedeck

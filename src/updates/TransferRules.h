// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>

namespace tunedeck {

struct TransferRules {
    /// A file with the certificates of the authorities to trust, in PEM. Empty for those of the system.
    QString authorities = {};
    /// The longest time to connect, and the longest time below the least rate.
    std::chrono::seconds patience = std::chrono::seconds(15);
    /// In bytes per second.
    int leastRate = 1'000;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace tunedeck {

/// The first of `addresses`, which semicolons separate, where a bus greets back within `patience`, which it does on the
/// thread that serves everybody. Waits for it, `patience` for each address at most. An address that is neither the
/// socket of a file nor an abstract one is taken without a greeting, as only Qt finds out then. No value if there is no
/// such bus.
[[nodiscard]] std::optional<QString> addressThatGreets(const QString &addresses, std::chrono::milliseconds patience);

} // namespace tunedeck

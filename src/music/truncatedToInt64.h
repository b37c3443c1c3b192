// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

namespace tunedeck {

/// The integer part of `value`; none where that is not finite or not within 64 bits.
[[nodiscard]] constexpr std::optional<qint64> truncatedToInt64(double value)
{
    // The greatest 64-bit integer is no double, its successor is: converting that one would be undefined. A value that
    // is not a number fails both comparisons.
    constexpr double beyond = 9223372036854775808.0;
    if (!(value >= -beyond && value < beyond)) {
        return std::nullopt;
    }
    return static_cast<qint64>(value);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace tunedeck {

/// What a variant from outside holds, if it is of that type: no text is read as a number, no number as a text, and
/// neither takes a Boolean.
/// @{
[[nodiscard]] std::optional<QString> stringFrom(const QVariant &value);
/// An integer of any width; none for one beyond a signed 64-bit integer.
[[nodiscard]] std::optional<qint64> integerFrom(const QVariant &value);
/// An integer or a floating-point number, as it stands.
[[nodiscard]] std::optional<double> numberFrom(const QVariant &value);
/// @}

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

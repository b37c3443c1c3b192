// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace tunedeck {

/// The value of a variant from outside; none if it has another type. No text is read as a number, no number as a text,
/// and no Boolean as either.
/// @{
[[nodiscard]] std::optional<QString> stringFrom(const QVariant &value);
/// An integer of any width; none if it does not fit into a signed 64-bit integer.
[[nodiscard]] std::optional<qint64> integerFrom(const QVariant &value);
/// An integer or a floating-point number, which may be infinite or not a number.
[[nodiscard]] std::optional<double> numberFrom(const QVariant &value);
/// @}

/// The integer part of `value`; none if it is not finite or does not fit into a signed 64-bit integer.
[[nodiscard]] constexpr std::optional<qint64> truncatedToInt64(double value)
{
    // The greatest 64-bit integer is no double, but its successor is, and to convert that one would be undefined. A
    // value that is not a number fails both comparisons.
    constexpr double beyond = 9223372036854775808.0;
    if (!(value >= -beyond && value < beyond)) {
        return std::nullopt;
    }
    return static_cast<qint64>(value);
}

} // namespace tunedeck

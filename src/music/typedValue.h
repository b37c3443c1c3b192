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

} // namespace tunedeck

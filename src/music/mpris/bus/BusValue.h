// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

class QDBusMessage;

/// Values from the bus. A message may hold anything: it is made plain once, where it arrives, and the other functions
/// read plain values. Every function answers a clean value or none, whatever type or size it gets.
namespace tunedeck::bus {

/// Characters kept of a text.
inline constexpr qsizetype maximumTextLength = 1'000;
/// Elements kept of a list or map.
inline constexpr int maximumElements = 1'000;

/// Values kept of a message, in all its lists and maps.
inline constexpr int maximumValues = 10'000;
/// Characters, or bytes, kept of a value that is not known to be a text for people yet.
inline constexpr qsizetype longestRawText = 65'536;

/// Turns the values that QtDBus leaves packed (maps, lists, structures, variants, object paths) into QVariantMap,
/// QVariantList and QString. What would be cut is not unpacked first. Lists and maps are cut at maximumElements, all of
/// them together at maximumValues, bytes and texts at longestRawText; values nested more than eight deep are left out.
[[nodiscard]] QVariant plainValue(const QVariant &value);
/// The map in `value`, made plain; empty if `value` is no map.
[[nodiscard]] QVariantMap plainMap(const QVariant &value);
/// The arguments of a message, made plain.
[[nodiscard]] QVariantList plainArguments(const QDBusMessage &message);

/// A text, or a list of texts joined with ", ". It is cut at maximumTextLength and trimmed; control characters and line
/// ends become spaces, and characters that turn the text around them go (see isDirectionControl()). None if nothing is
/// left.
[[nodiscard]] std::optional<QString> text(const QVariant &value);
/// A list of texts, or one text, each cleaned like text() does; at most `maximum` of them.
[[nodiscard]] QStringList texts(const QVariant &value, qsizetype maximum);
/// A finite number. None for a text that spells a number.
[[nodiscard]] std::optional<double> number(const QVariant &value);
[[nodiscard]] std::optional<bool> boolean(const QVariant &value);

} // namespace tunedeck::bus

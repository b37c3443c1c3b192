// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

constexpr qsizetype longestMenuText = 60;

/// `text` for an entry of a menu or a list: one line of at most `longest` characters, at least 1, the last of them "…"
/// if something is cut off. Invisible characters, such as those that change the direction of the text around them, are
/// removed, so that a text from a player cannot rearrange the entry that it is in.
[[nodiscard]] QString menuText(const QString &text, qsizetype longest = longestMenuText);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// `text` for an entry of a menu or a list: one line of at most 60 characters, the last of them "…" if something is cut
/// off. Invisible characters, such as those that change the direction of the text around them, are removed, so that a
/// text from a player cannot rearrange the entry that it is in.
[[nodiscard]] QString menuText(const QString &text);

} // namespace tunedeck

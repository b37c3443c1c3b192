// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// `text` as the title of a menu item that has no mnemonic. A menu reads "&" as the mark of one; a track's title and a
/// player's name have none.
[[nodiscard]] inline QString literalTitle(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace tunedeck {

/// The length of the tag that `text` begins with, from its "<" to its ">". A ">" within quotes does not end it. All of
/// `text` where nothing does.
[[nodiscard]] qsizetype lengthOfTag(QStringView text);

/// The length of what `text` begins with, up to the end of the first `end` in it. All of `text` where there is none.
[[nodiscard]] qsizetype lengthUpTo(QStringView text, QStringView end);

} // namespace tunedeck

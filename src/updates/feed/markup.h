// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace tunedeck {

/// The length of the tag at the beginning of `text`, from "<" to ">". A ">" within quotes does not end it. The length
/// of `text` if the tag has no end.
[[nodiscard]] qsizetype lengthOfTag(QStringView text);

/// The length of `text` up to and including the first `end`, whatever its case. The whole length if there is none.
[[nodiscard]] qsizetype lengthUpTo(QStringView text, QStringView end);

} // namespace tunedeck

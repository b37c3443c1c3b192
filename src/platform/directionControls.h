// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// Whether `character` embeds, overrides or isolates a direction of text (U+202A to U+202E, U+2066 to U+2069). One that
/// is not closed turns the text after it too, such as a word of ours behind a player's name. The marks of a direction
/// (U+200E, U+200F) reach no further than their neighbours, and right-to-left texts need them.
[[nodiscard]] constexpr bool isDirectionControl(char32_t character)
{
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

/// `text` without these characters.
[[nodiscard]] QString withoutDirectionControls(QString text);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// Gives every line edit that a screen reader asks from now on an accessible interface of ours. Qt 6.4's own never
/// returns when it is asked for a word, a sentence or a character that no boundary ends, for example at the end of the
/// text. May be called any number of times.
void installAccessibleLineEdits();

} // namespace tunedeck

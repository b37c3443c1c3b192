// SPDX-License-Identifier: MIT
#pragma once

/// What all panes of the preferences window keep to, in points.
namespace tunedeck::PaneMetrics {

inline constexpr int margin = 20;
/// Between what belongs together.
inline constexpr int gap = 4;
/// Between one choice and the next.
inline constexpr int choiceGap = 14;

} // namespace tunedeck::PaneMetrics

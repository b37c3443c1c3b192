// SPDX-License-Identifier: MIT
#pragma once

/// The distances in all panes of the preferences window, in points.
namespace tunedeck::PaneMetrics {

inline constexpr int margin = 20;
/// Between parts of one choice.
inline constexpr int gap = 4;
/// Between two choices.
inline constexpr int choiceGap = 14;

} // namespace tunedeck::PaneMetrics

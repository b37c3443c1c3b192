// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

namespace tunedeck {

/// The glyph of a round transport button. The last three show nothing.
enum class PlayerButtonTypes : qint64 { pause, play, stop, backward, forward, reserved5, reserved6, reserved7 };

/// No value unless `rawValue` is from 0 to 7.
[[nodiscard]] constexpr std::optional<PlayerButtonTypes> playerButtonType(qint64 rawValue)
{
    if (rawValue < 0 || rawValue > static_cast<qint64>(PlayerButtonTypes::reserved7)) {
        return std::nullopt;
    }
    return static_cast<PlayerButtonTypes>(rawValue);
}

} // namespace tunedeck

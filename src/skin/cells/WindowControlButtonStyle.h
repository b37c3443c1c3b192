// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

namespace tunedeck {

enum class WindowControlButtonStyle : qint64 { close, minimize, maximize };

/// No value unless `rawValue` is from 0 to 2.
[[nodiscard]] constexpr std::optional<WindowControlButtonStyle> windowControlButtonStyle(qint64 rawValue)
{
    if (rawValue < 0 || rawValue > static_cast<qint64>(WindowControlButtonStyle::maximize)) {
        return std::nullopt;
    }
    return static_cast<WindowControlButtonStyle>(rawValue);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// The text that the display shows as the artist of one of four known radio stations: U+F8FF, then "Music". None for
/// any other address. Links compare byte for byte, except for their host, which may be any.
[[nodiscard]] std::optional<QString> radioStationLabel(const QString &storeUrl);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// What the display shows as the artist of a radio station that is known by its link: U+F8FF, then "Music". None for
/// any other address. Links compare byte for byte; only their host is free.
[[nodiscard]] std::optional<QString> radioStationLabel(const QString &storeUrl);

} // namespace tunedeck

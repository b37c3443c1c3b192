// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// The track on the display. Equal when all five fields are.
struct MusicConnectorTrack {
    std::optional<QString> trackName;
    std::optional<QString> artistName;
    std::optional<QString> albumName;
    std::optional<double> duration; ///< seconds
    std::optional<QString> genre;

    MusicConnectorTrack(std::optional<QString> name, std::optional<QString> artist, std::optional<QString> album,
        std::optional<double> seconds, std::optional<QString> genreName);

    bool operator==(const MusicConnectorTrack &) const = default;
};

} // namespace tunedeck

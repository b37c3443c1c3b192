// SPDX-License-Identifier: MIT
#include "music/MusicConnectorTrack.h"

#include <utility>

namespace tunedeck {

MusicConnectorTrack::MusicConnectorTrack(std::optional<QString> name, std::optional<QString> artist,
    std::optional<QString> album, std::optional<double> seconds, std::optional<QString> genreName)
    : trackName(std::move(name))
    , artistName(std::move(artist))
    , albumName(std::move(album))
    , duration(seconds)
    , genre(std::move(genreName))
{
}

} // namespace tunedeck

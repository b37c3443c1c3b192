// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// An entry of the playlist picker.
struct PlaylistOption {
    qint64 id;
    QString name; ///< as Music gives it

    bool operator==(const PlaylistOption &) const = default;
};

} // namespace tunedeck

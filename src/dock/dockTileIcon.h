// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

namespace tunedeck {

/// The image `imageName` from the program's resources, in the sizes that docks, task bars and switchers show. Null if
/// there is no such image.
[[nodiscard]] QIcon dockTileIcon(const QString &imageName);

} // namespace tunedeck

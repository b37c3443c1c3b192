// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

namespace tunedeck {

/// The program's own image of this name, in every size that a dock, a task bar or a switcher may show. Null where there
/// is no such image.
[[nodiscard]] QIcon dockTileIcon(const QString &imageName);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "music/outputChoices.h"

#include <QString>

#include <functional>

class QMenu;
class QObject;

namespace tunedeck {

/// Adds the entries of the menu "Play Through" to `menu`, below the obstacle, if there is one. `moveTo` is called with
/// the identifier of the chosen one, unless `receiver` is destroyed.
void addOutputItems(QMenu &menu, const OutputChoices &choices, const QObject *receiver,
    const std::function<void(const QString &id)> &moveTo);

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "preferences/PreferencesPaneController.h"

#include <QAction>
#include <QWidget>

namespace tunedeck {

bool PreferencesPaneController::validateMenuItem(const QAction &item) const
{
    return item.objectName() == closeWindowItem;
}

void PreferencesPaneController::closeWindow()
{
    view().window()->close();
}

} // namespace tunedeck

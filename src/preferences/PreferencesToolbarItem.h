// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

namespace tunedeck {

/// One pane in the toolbar of the preferences window.
struct PreferencesToolbarItem {
    QString identifier; ///< that of the pane
    /// Translated. Shown below the image, and as the window's title while the pane is shown.
    QString name;
    QIcon image;
};

} // namespace tunedeck

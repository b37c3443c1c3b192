// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace tunedeck {

class PreferencesPaneController;

/// The description of the preferences window.
struct AppPreferences {
    struct Pane {
        QString identifier;
        QString name; ///< translated
        QString symbol;
    };

    QList<Pane> panes; ///< in the toolbar's order
    /// Returns the image of a pane's symbol, or a null icon if there is none.
    std::function<QIcon(const QString &symbol)> symbolImage;
    /// Returns the controller of the pane with this identifier, or null if there is none.
    std::function<std::unique_ptr<PreferencesPaneController>(const QString &identifier)> instantiateController;
};

} // namespace tunedeck

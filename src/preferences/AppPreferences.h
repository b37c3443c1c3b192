// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace tunedeck {

class PreferencesPaneController;

/// What the preferences window is made of.
struct AppPreferences {
    struct Pane {
        QString identifier;
        /// As the user reads it.
        QString name;
        QString symbol;
    };

    /// In the toolbar's order.
    QList<Pane> panes;
    /// The image of a pane's symbol; a null icon where there is none.
    std::function<QIcon(const QString &symbol)> symbolImage;
    /// The controller of the pane with this identifier; null where there is none.
    std::function<std::unique_ptr<PreferencesPaneController>(const QString &identifier)> instantiateController;
};

} // namespace tunedeck

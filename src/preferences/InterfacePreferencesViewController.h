// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/PreferencesPaneController.h"

#include <QWidget>

class QCheckBox;

namespace tunedeck {

class UserDefaults;

/// The Interface pane: how the player looks. Its check boxes show and change settings.
class InterfacePreferencesViewController : public PreferencesPaneController {
    Q_OBJECT

public:
    /// `defaults` must outlive the controller. `showsWindowIcons` is whether the desktop shows the program's own icon.
    InterfacePreferencesViewController(UserDefaults &defaults, bool showsWindowIcons, QObject *parent = nullptr);

    [[nodiscard]] QWidget &view() override { return m_view; }
    [[nodiscard]] QCheckBox &appearanceClassicBox() { return *m_appearanceClassicBox; }
    /// Disabled where it has no effect: while the appearance is classic, and on a desktop that does not show the
    /// program's own icon.
    [[nodiscard]] QCheckBox &appearanceUpdatesDockIconBox() { return *m_appearanceUpdatesDockIconBox; }
    [[nodiscard]] QCheckBox &volumeButtonsHiddenBox() { return *m_volumeButtonsHiddenBox; }

private:
    /// Adds a check box at the end of the view.
    QCheckBox *addCheckBox(const QString &key, const QString &text, const QString &explanation);

    UserDefaults &m_defaults;
    QWidget m_view;
    QCheckBox *m_appearanceClassicBox;
    QCheckBox *m_appearanceUpdatesDockIconBox;
    QCheckBox *m_volumeButtonsHiddenBox;
};

} // namespace tunedeck

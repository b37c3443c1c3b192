// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/PreferencesPaneController.h"

#include <QWidget>

class QCheckBox;

namespace tunedeck {

class UserDefaults;

/// The Interface pane: how the player looks. Its check boxes follow the settings, and the settings them.
class InterfacePreferencesViewController : public PreferencesPaneController {
    Q_OBJECT

public:
    /// `defaults` must outlive the controller.
    explicit InterfacePreferencesViewController(UserDefaults &defaults, QObject *parent = nullptr);

    [[nodiscard]] QWidget &view() override;
    [[nodiscard]] QCheckBox &appearanceClassicBox();
    /// Disabled while the appearance is classic, where it has no effect.
    [[nodiscard]] QCheckBox &appearanceUpdatesDockIconBox();
    [[nodiscard]] QCheckBox &volumeButtonsHiddenBox();

private:
    /// Adds it to the view's end.
    QCheckBox *addCheckBox(const QString &key, const QString &text, const QString &explanation);

    UserDefaults &m_defaults;
    QWidget m_view;
    QCheckBox *m_appearanceClassicBox;
    QCheckBox *m_appearanceUpdatesDockIconBox;
    QCheckBox *m_volumeButtonsHiddenBox;
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/PreferencesPaneController.h"

#include <QWidget>

class QPushButton;

namespace tunedeck {

class Updater;

/// The Updates pane: which version runs, and a button that looks for a newer one.
class UpdatePreferencesViewController : public PreferencesPaneController {
    Q_OBJECT

public:
    /// `updater` must outlive the controller.
    explicit UpdatePreferencesViewController(Updater &updater, QObject *parent = nullptr);

    [[nodiscard]] QWidget &view() override;
    [[nodiscard]] QPushButton &updateButton();
    [[nodiscard]] QPushButton &helpButton();
    [[nodiscard]] Updater &updater();

public Q_SLOTS:
    void helpButtonAction();

private:
    void layOut();

    Updater &m_updater;
    QWidget m_view;
    QPushButton *m_updateButton;
    QPushButton *m_helpButton;
};

} // namespace tunedeck

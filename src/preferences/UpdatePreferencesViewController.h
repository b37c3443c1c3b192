// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/PreferencesPaneController.h"

#include <QWidget>

class QPushButton;

namespace tunedeck {

class Updater;

/// The Updates pane: the version of the program, and a button that looks for a newer one.
class UpdatePreferencesViewController : public PreferencesPaneController {
    Q_OBJECT

public:
    /// `updater` must outlive the controller.
    explicit UpdatePreferencesViewController(Updater &updater, QObject *parent = nullptr);

    [[nodiscard]] QWidget &view() override { return m_view; }
    [[nodiscard]] QPushButton &updateButton() { return *m_updateButton; }
    [[nodiscard]] QPushButton &helpButton() { return *m_helpButton; }
    [[nodiscard]] Updater &updater() { return m_updater; }

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

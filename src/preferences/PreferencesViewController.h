// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/PreferencesPaneController.h"
#include "preferences/SettingBox.h"

#include <QWidget>

#include <memory>

class QCheckBox;
class QFormLayout;
class QRadioButton;

namespace tunedeck {

class DesktopSettings;
class FollowablePlayers;
class FollowedPlayerPicker;
class NeverFollowedView;
class UserDefaults;

/// The General pane: which time the display shows on its right, which way a wheel turns the volume, which player is
/// followed, and which ones never are, when the window is there, and whether keyboard shortcuts work in every window.
class PreferencesViewController : public PreferencesPaneController {
    Q_OBJECT
    Q_PROPERTY(
        bool elapsedTimeEnabled READ elapsedTimeEnabled WRITE setElapsedTimeEnabled NOTIFY elapsedTimeEnabledChanged)

public:
    /// The references must outlive the controller.
    PreferencesViewController(UserDefaults &defaults, FollowablePlayers &players,
        const DesktopSettings &desktopSettings, QObject *parent = nullptr);

    [[nodiscard]] QWidget &view() override { return m_view; }
    [[nodiscard]] QRadioButton &radioButtonRemainingTime() { return *m_radioButtonRemainingTime; }
    [[nodiscard]] QRadioButton &radioButtonTotalTime() { return *m_radioButtonTotalTime; }
    [[nodiscard]] QCheckBox &wheelDirectionBox() { return *m_wheelDirection; }
    [[nodiscard]] FollowedPlayerPicker &followedPlayerPicker() { return *m_followedPlayerPicker; }
    [[nodiscard]] QCheckBox &startWithSessionBox() { return *m_startWithSession; }
    [[nodiscard]] QCheckBox &showOnlyWithPlayerBox() { return *m_showOnlyWithPlayer; }
    [[nodiscard]] QCheckBox &globalShortcutsBox() { return *m_globalShortcuts; }
    [[nodiscard]] NeverFollowedView &neverFollowed() { return *m_neverFollowed; }

    /// A store of settings that the pane's controls could be bound to. Nothing sets it yet: they are bound to the
    /// settings given to the constructor.
    [[nodiscard]] const std::shared_ptr<UserDefaults> &userDefaultsController() const
    {
        return m_userDefaultsController;
    }

    /// Despite its name: whether the remaining time is shown.
    [[nodiscard]] bool elapsedTimeEnabled() const { return m_elapsedTimeEnabled; }
    /// Follows the setting; a call does not write it.
    void setElapsedTimeEnabled(bool enabled);

public Q_SLOTS:
    void timeRadioButtonDidChange();

Q_SIGNALS:
    void elapsedTimeEnabledChanged(bool enabled);

private:
    void layOut();
    void addPlayers(QFormLayout &form);
    void refreshRadioButtons();

    UserDefaults &m_defaults;
    std::shared_ptr<UserDefaults> m_userDefaultsController;
    QWidget m_view;
    QRadioButton *m_radioButtonRemainingTime;
    QRadioButton *m_radioButtonTotalTime;
    SettingBox *m_wheelDirection;
    FollowedPlayerPicker *m_followedPlayerPicker;
    NeverFollowedView *m_neverFollowed;
    SettingBox *m_startWithSession;
    SettingBox *m_showOnlyWithPlayer;
    SettingBox *m_globalShortcuts;
    bool m_elapsedTimeEnabled = false;
};

} // namespace tunedeck

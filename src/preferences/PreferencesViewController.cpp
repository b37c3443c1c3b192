// SPDX-License-Identifier: MIT
#include "preferences/PreferencesViewController.h"

#include "platform/UserDefaults.h"
#include "preferences/ExplanationLabel.h"
#include "preferences/FollowedPlayerPicker.h"
#include "preferences/NeverFollowedView.h"
#include "preferences/PaneMetrics.h"

#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QSpacerItem>
#include <QVBoxLayout>

namespace tunedeck {

namespace {
void addGap(QFormLayout &form)
{
    form.addItem(new QSpacerItem(0, PaneMetrics::choiceGap - PaneMetrics::gap));
}

/// Adds `box` with its explanation below it.
void addChoice(QFormLayout &form, const QString &caption, SettingBox &box)
{
    addGap(form);
    form.addRow(caption, &box);
    // Qt gives a row without a caption the height of the text in a narrow pane.
    const int explanationRow = form.rowCount();
    form.setItem(explanationRow, QFormLayout::LabelRole, new QSpacerItem(0, 0));
    form.setWidget(explanationRow, QFormLayout::FieldRole, &box.explanation());
}
} // namespace

PreferencesViewController::PreferencesViewController(
    UserDefaults &defaults, FollowablePlayers &players, const DesktopSettings &desktopSettings, QObject *parent)
    : PreferencesPaneController(parent)
    , m_defaults(defaults)
    , m_radioButtonRemainingTime(
          new QRadioButton(tr("&Remaining time", "Choice in the General pane: what the time on the right is"), &m_view))
    , m_radioButtonTotalTime(
          new QRadioButton(tr("&Duration", "Choice in the General pane: what the time on the right is"), &m_view))
    , m_wheelDirection(new SettingBox(defaults, SettingsKey::wheelDirectionTurned,
          tr("&Turn the wheel's direction", "Check box in the General pane: which way a mouse wheel turns the volume"),
          tr("If turning it upwards makes the music quieter.", "Below the check box \"Turn the wheel's direction\""),
          &m_view))
    , m_followedPlayerPicker(new FollowedPlayerPicker(defaults, players, &m_view))
    , m_neverFollowed(new NeverFollowedView(players, &m_view))
    , m_startWithSession(new SettingBox(defaults, SettingsKey::startWithSession,
          tr("&Start with the session", "Check box in the General pane"),
          tr("Tunedeck is there when you log in.", "Below the check box \"Start with the session\""), &m_view))
    , m_showOnlyWithPlayer(new SettingBox(defaults, SettingsKey::showOnlyWithPlayer,
          tr("Show &only while a player is there", "Check box in the General pane: about the window"),
          tr("The window goes with the last player and comes back with the next.",
              "Below the check box \"Show only while a player is there\""),
          &m_view))
    , m_globalShortcuts(new SettingBox(defaults, SettingsKey::globalShortcuts,
          tr("Shortcuts in &every window", "Check box in the General pane: keyboard shortcuts"),
          tr("The desktop lets you choose the keys.", "Below the check box \"Shortcuts in every window\""), &m_view))
{
    m_startWithSession->showNotes(desktopSettings);
    m_globalShortcuts->showNotes(desktopSettings);
    layOut();
    for (const QRadioButton *button : {m_radioButtonRemainingTime, m_radioButtonTotalTime}) {
        connect(button, &QRadioButton::clicked, this, &PreferencesViewController::timeRadioButtonDidChange);
    }
    m_defaults.bind(SettingsKey::remainingTimeEnabled, this, [this](bool enabled) { setElapsedTimeEnabled(enabled); });
}

void PreferencesViewController::setElapsedTimeEnabled(bool enabled)
{
    m_elapsedTimeEnabled = enabled;
    refreshRadioButtons();
    Q_EMIT elapsedTimeEnabledChanged(enabled);
}

void PreferencesViewController::timeRadioButtonDidChange()
{
    if (m_radioButtonTotalTime->isChecked()) {
        m_defaults.setValue(SettingsKey::remainingTimeEnabled, false);
    } else if (m_radioButtonRemainingTime->isChecked()) {
        m_defaults.setValue(SettingsKey::remainingTimeEnabled, true);
    }
}

void PreferencesViewController::layOut()
{
    auto *form = new QFormLayout(&m_view);
    form->setContentsMargins(PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin);
    form->setVerticalSpacing(PaneMetrics::gap);
    form->setLabelAlignment(Qt::AlignRight);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("Time on the right:", "Caption in the General pane: the display's time on the right"),
        m_radioButtonRemainingTime);
    form->addRow(QString(), m_radioButtonTotalTime);
    addChoice(*form, tr("Volume:", "Caption in the General pane, before the choice of the wheel's direction"),
        *m_wheelDirection);
    addPlayers(*form);
    addChoice(*form, tr("Window:", "Caption in the General pane, before the choices of when the window is there"),
        *m_startWithSession);
    addChoice(*form, QString(), *m_showOnlyWithPlayer);
    addChoice(*form, tr("Keyboard:", "Caption in the General pane, before the choice of shortcuts in every window"),
        *m_globalShortcuts);
}

void PreferencesViewController::addPlayers(QFormLayout &form)
{
    auto *playerCaption =
        new QLabel(tr("&Follow player:", "Caption in the General pane, before the choice of the player"), &m_view);
    playerCaption->setBuddy(m_followedPlayerPicker);
    auto *player = new QVBoxLayout;
    player->setSpacing(PaneMetrics::gap);
    player->addWidget(m_followedPlayerPicker);
    player->addWidget(new ExplanationLabel(
        tr("Automatic follows the player that is playing.", "Below the choice of the player to follow"),
        *m_followedPlayerPicker));
    addGap(form);
    form.addRow(playerCaption, player);

    auto *neverCaption =
        new QLabel(tr("&Never follow:", "Caption in the General pane, before the list of such players"), &m_view);
    neverCaption->setBuddy(&m_neverFollowed->list());
    form.addRow(neverCaption, m_neverFollowed);
    const auto showUnlessEmpty = [this, shown = &form] {
        shown->setRowVisible(m_neverFollowed, !m_neverFollowed->isEmpty());
    };
    connect(m_neverFollowed, &NeverFollowedView::changed, &form, showUnlessEmpty);
    showUnlessEmpty();
}

void PreferencesViewController::refreshRadioButtons()
{
    const bool showsRemainingTime = m_defaults.boolForKey(SettingsKey::remainingTimeEnabled);
    // The buttons exclude each other: checking one unchecks the other.
    (showsRemainingTime ? m_radioButtonRemainingTime : m_radioButtonTotalTime)->setChecked(true);
}

} // namespace tunedeck

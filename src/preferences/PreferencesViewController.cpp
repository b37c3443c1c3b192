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

PreferencesViewController::PreferencesViewController(
    UserDefaults &defaults, FollowablePlayers &players, QObject *parent)
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
{
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
    auto *playerCaption =
        new QLabel(tr("&Follow player:", "Caption in the General pane, before the choice of the player"), &m_view);
    playerCaption->setBuddy(m_followedPlayerPicker);
    auto *player = new QVBoxLayout;
    player->setSpacing(PaneMetrics::gap);
    player->addWidget(m_followedPlayerPicker);
    player->addWidget(new ExplanationLabel(
        tr("Automatic follows the player that is playing.", "Below the choice of the player to follow"),
        *m_followedPlayerPicker));

    auto *form = new QFormLayout(&m_view);
    form->setContentsMargins(PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin);
    form->setVerticalSpacing(PaneMetrics::gap);
    form->setLabelAlignment(Qt::AlignRight);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("Time on the right:", "Caption in the General pane: the display's time on the right"),
        m_radioButtonRemainingTime);
    form->addRow(QString(), m_radioButtonTotalTime);
    form->addItem(new QSpacerItem(0, PaneMetrics::choiceGap - PaneMetrics::gap));
    form->addRow(
        tr("Volume:", "Caption in the General pane, before the choice of the wheel's direction"), m_wheelDirection);
    // Qt gives a row without a caption the height of the text in a narrow pane.
    const int explanationRow = form->rowCount();
    form->setItem(explanationRow, QFormLayout::LabelRole, new QSpacerItem(0, 0));
    form->setWidget(explanationRow, QFormLayout::FieldRole, &m_wheelDirection->explanation());
    form->addItem(new QSpacerItem(0, PaneMetrics::choiceGap - PaneMetrics::gap));
    form->addRow(playerCaption, player);

    auto *neverCaption =
        new QLabel(tr("&Never follow:", "Caption in the General pane, before the list of such players"), &m_view);
    neverCaption->setBuddy(&m_neverFollowed->list());
    form->addRow(neverCaption, m_neverFollowed);
    const auto showUnlessEmpty = [this, form] { form->setRowVisible(m_neverFollowed, !m_neverFollowed->isEmpty()); };
    connect(m_neverFollowed, &NeverFollowedView::changed, form, showUnlessEmpty);
    showUnlessEmpty();
}

void PreferencesViewController::refreshRadioButtons()
{
    const bool showsRemainingTime = m_defaults.boolForKey(SettingsKey::remainingTimeEnabled);
    // The buttons exclude each other: checking one unchecks the other.
    (showsRemainingTime ? m_radioButtonRemainingTime : m_radioButtonTotalTime)->setChecked(true);
}

} // namespace tunedeck

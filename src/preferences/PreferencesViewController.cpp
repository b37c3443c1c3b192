// SPDX-License-Identifier: MIT
#include "preferences/PreferencesViewController.h"

#include "music/FollowablePlayers.h"
#include "music/menuText.h"
#include "platform/UserDefaults.h"
#include "preferences/ExplanationLabel.h"
#include "preferences/PaneMetrics.h"

#include <QAction>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpacerItem>
#include <QVBoxLayout>

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int narrowestPicker = 20; // characters

/// An entry of the list with a short name of one line: a player may send any text as its name.
FollowablePlayer listEntry(const QString &id, const QString &name)
{
    const QString line = menuText(name);
    return {.id = id, .name = line.isEmpty() ? menuText(id) : line, .desktopEntry = {}, .title = {}};
}
} // namespace

PreferencesViewController::PreferencesViewController(
    UserDefaults &defaults, FollowablePlayers &players, QObject *parent)
    : PreferencesPaneController(parent)
    , m_defaults(defaults)
    , m_players(players)
    , m_radioButtonRemainingTime(
          new QRadioButton(tr("&Remaining time", "Choice in the General pane: what the time on the right is"), &m_view))
    , m_radioButtonTotalTime(
          new QRadioButton(tr("&Duration", "Choice in the General pane: what the time on the right is"), &m_view))
    , m_followedPlayerPicker(new QComboBox(&m_view))
{
    layOut();
    for (const QRadioButton *button : {m_radioButtonRemainingTime, m_radioButtonTotalTime}) {
        connect(button, &QRadioButton::clicked, this, &PreferencesViewController::timeRadioButtonDidChange);
    }
    m_defaults.bind(SettingsKey::remainingTimeEnabled, this, [this](bool enabled) { setElapsedTimeEnabled(enabled); });

    connect(m_followedPlayerPicker, &QComboBox::activated, this, &PreferencesViewController::followPlayer);
    connect(&m_players, &FollowablePlayers::followablePlayersChanged, this, &PreferencesViewController::refreshPlayers);
    connect(&m_defaults, &UserDefaults::valueChanged, this, [this](const QString &key) {
        if (key == SettingsKey::followedPlayer) {
            refreshPlayers();
        }
    });
    refreshPlayers();
}

void PreferencesViewController::setElapsedTimeEnabled(bool enabled)
{
    m_elapsedTimeEnabled = enabled;
    refreshRadioButtons();
    Q_EMIT elapsedTimeEnabledChanged(enabled);
}

bool PreferencesViewController::validateMenuItem(const QAction &item) const
{
    return item.objectName() == closeWindowItem;
}

void PreferencesViewController::timeRadioButtonDidChange()
{
    if (m_radioButtonTotalTime->isChecked()) {
        m_defaults.setValue(SettingsKey::remainingTimeEnabled, false);
    } else if (m_radioButtonRemainingTime->isChecked()) {
        m_defaults.setValue(SettingsKey::remainingTimeEnabled, true);
    }
}

void PreferencesViewController::closeWindow()
{
    m_view.window()->close();
}

void PreferencesViewController::layOut()
{
    m_followedPlayerPicker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_followedPlayerPicker->setMinimumContentsLength(narrowestPicker);

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
    form->addRow(playerCaption, player);
}

void PreferencesViewController::refreshRadioButtons()
{
    const bool showsRemainingTime = m_defaults.boolForKey(SettingsKey::remainingTimeEnabled);
    // The buttons exclude each other: checking one unchecks the other.
    (showsRemainingTime ? m_radioButtonRemainingTime : m_radioButtonTotalTime)->setChecked(true);
}

QList<FollowablePlayer> PreferencesViewController::offeredPlayers() const
{
    QList<FollowablePlayer> players = {
        listEntry(QString(), tr("Automatic", "In the list of players to follow: the one that plays"))};
    const QList<FollowablePlayer> seen = m_players.followablePlayers();
    for (const FollowablePlayer &player :
        seen.first(std::min(seen.size(), qsizetype(FollowablePlayers::maximumPlayers)))) {
        players.append(listEntry(player.id, player.name));
    }
    const QString followed = m_defaults.stringForKey(SettingsKey::followedPlayer);
    const auto isFollowed = [&followed](const FollowablePlayer &player) { return player.id == followed; };
    if (std::none_of(players.begin(), players.end(), isFollowed)) {
        // The list has its name from when it ran.
        const int row = m_followedPlayerPicker->findData(followed);
        players.append(listEntry(followed, m_followedPlayerPicker->itemText(row)));
    }
    return players;
}

/// Changes the entries one by one, so that an open list keeps its position.
void PreferencesViewController::refreshPlayers()
{
    const QList<FollowablePlayer> players = offeredPlayers();
    QComboBox &picker = *m_followedPlayerPicker;
    for (int row = picker.count() - 1; row >= 0; --row) {
        const auto isInRow = [id = picker.itemData(row).toString()](
                                 const FollowablePlayer &player) { return player.id == id; };
        if (std::none_of(players.begin(), players.end(), isInRow)) {
            picker.removeItem(row);
        }
    }
    for (int row = 0; row < players.size(); ++row) {
        const FollowablePlayer &player = players.at(row);
        if (picker.itemData(row) != player.id) {
            picker.insertItem(row, player.name, player.id);
        }
        picker.setItemText(row, player.name);
    }
    // Entries whose order has changed are in the list twice now; the old ones are at its end.
    while (picker.count() > players.size()) {
        picker.removeItem(picker.count() - 1);
    }
    picker.setCurrentIndex(picker.findData(m_defaults.stringForKey(SettingsKey::followedPlayer)));
}

void PreferencesViewController::followPlayer(int row)
{
    m_defaults.setValue(SettingsKey::followedPlayer, m_followedPlayerPicker->itemData(row));
}

} // namespace tunedeck

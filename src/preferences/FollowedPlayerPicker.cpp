// SPDX-License-Identifier: MIT
#include "preferences/FollowedPlayerPicker.h"

#include "music/followChoices.h"
#include "platform/UserDefaults.h"

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int narrowest = 20; // characters
} // namespace

FollowedPlayerPicker::FollowedPlayerPicker(UserDefaults &defaults, FollowablePlayers &players, QWidget *parent)
    : QComboBox(parent)
    , m_defaults(defaults)
    , m_players(players)
{
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(narrowest);
    connect(this, &QComboBox::activated, this, &FollowedPlayerPicker::follow);
    connect(&m_players, &FollowablePlayers::followablePlayersChanged, this, &FollowedPlayerPicker::refresh);
    connect(&m_defaults, &UserDefaults::valueChanged, this, [this](const QString &key) {
        if (key == SettingsKey::followedPlayer) {
            refresh();
        }
    });
    refresh();
}

/// Changes the entries one by one, so that an open list keeps its position.
void FollowedPlayerPicker::refresh()
{
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    const QList<FollowChoice> choices = followChoices(m_players, pinned);
    for (int row = count() - 1; row >= 0; --row) {
        if (std::ranges::find(choices, itemData(row).toString(), &FollowChoice::id) == choices.end()) {
            removeItem(row);
        }
    }
    for (int row = 0; row < choices.size(); ++row) {
        const FollowChoice &choice = choices.at(row);
        if (itemData(row) != choice.id) {
            insertItem(row, choice.text, choice.id);
        }
        setItemText(row, choice.text);
    }
    // Entries whose order has changed are in the list twice now; the old ones are at its end.
    while (count() > choices.size()) {
        removeItem(count() - 1);
    }
    const auto chosen = std::ranges::find(choices, true, &FollowChoice::isChosen);
    setCurrentIndex(static_cast<int>(chosen - choices.begin()));
}

void FollowedPlayerPicker::follow(int row)
{
    m_defaults.setValue(SettingsKey::followedPlayer, itemData(row));
}

} // namespace tunedeck

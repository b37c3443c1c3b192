// SPDX-License-Identifier: MIT
#include "app/FollowMenu.h"

#include "music/followChoices.h"
#include "platform/DesktopEntries.h"
#include "platform/UserDefaults.h"
#include "widgets/literalTitle.h"

#include <QActionGroup>
#include <QIcon>
#include <QMenu>
#include <QPixmap>

#include <algorithm>
#include <optional>

namespace tunedeck {

namespace {
/// Automatic and a pinned player that does not run are beside the players.
constexpr qsizetype mostChoices = FollowablePlayers::maximumPlayers + 2;
} // namespace

FollowMenu::FollowMenu(QMenu &menu, const Environment &environment, QObject *parent)
    : QObject(parent)
    , m_menu(menu)
    , m_players(environment.players)
    , m_defaults(environment.defaults)
    , m_desktopEntries(environment.desktopEntries)
    , m_group(new QActionGroup(this))
{
    // A global menu bar reads the menu before it opens.
    fill();
    connect(&menu, &QMenu::aboutToShow, this, &FollowMenu::fill);
    const auto refillIfOpen = [this] {
        if (m_menu.isVisible()) {
            refill();
        }
    };
    connect(&m_players, &FollowablePlayers::followablePlayersChanged, this, refillIfOpen);
    connect(&m_desktopEntries, &DesktopEntries::factsKnown, this, refillIfOpen);
    connect(&m_defaults, &UserDefaults::valueChanged, this, refillIfOpen);
}

void FollowMenu::fill()
{
    m_menu.clear();
    m_choices.clear();
    m_separator = nullptr;
    const QList<FollowChoice> choices = this->choices();
    for (const FollowChoice &choice : choices) {
        show(choice, addEntry(choice.id));
    }
    offerNeverFollow();
}

/// Changes an open menu.
void FollowMenu::refill()
{
    QList<QAction *> gone = m_choices;
    const QList<FollowChoice> choices = this->choices();
    for (const FollowChoice &choice : choices) {
        const auto entry = std::ranges::find(gone, choice.id, [](const QAction *action) { return action->data(); });
        if (entry != gone.end()) {
            show(choice, **entry);
            gone.erase(entry);
        } else if (m_choices.size() < mostChoices) {
            show(choice, addEntry(choice.id));
        }
    }
    for (QAction *entry : std::as_const(gone)) {
        entry->setEnabled(false);
    }
    if (m_neverFollow) {
        m_neverFollow->setEnabled(isRunning(m_neverFollow->data().toString()));
    }
}

QList<FollowChoice> FollowMenu::choices() const
{
    return followChoices(m_players, m_defaults.stringForKey(SettingsKey::followedPlayer));
}

QAction &FollowMenu::addEntry(const QString &id)
{
    auto *entry = new QAction(&m_menu);
    entry->setData(id);
    entry->setCheckable(true);
    entry->setActionGroup(m_group);
    entry->setIconVisibleInMenu(true);
    m_menu.insertAction(m_separator, entry);
    m_choices.append(entry);
    connect(entry, &QAction::triggered, this, [this, id] { m_defaults.setValue(SettingsKey::followedPlayer, id); });
    return *entry;
}

void FollowMenu::show(const FollowChoice &choice, QAction &entry)
{
    entry.setText(literalTitle(choice.text));
    entry.setEnabled(true);
    entry.setChecked(choice.isChosen);
    QFont font = m_menu.font();
    font.setBold(choice.isFollowed);
    entry.setFont(font);
    if (entry.icon().isNull() && !choice.desktopEntry.isEmpty()) {
        const std::optional<DesktopEntryFacts> facts = m_desktopEntries.facts(choice.desktopEntry);
        if (facts && !facts->icon.isNull()) {
            entry.setIcon(QIcon(QPixmap::fromImage(facts->icon)));
        }
    }
}

void FollowMenu::offerNeverFollow()
{
    const std::optional<FollowablePlayer> followed = followedPlayer(m_players);
    if (!followed) {
        m_neverFollow = nullptr;
        return;
    }
    m_separator = m_menu.addSeparator();
    m_neverFollow = m_menu.addAction(literalTitle(neverFollowText(*followed)));
    m_neverFollow->setData(followed->id);
    connect(m_neverFollow, &QAction::triggered, this, [this, id = followed->id] { m_players.neverFollow(id); });
}

bool FollowMenu::isRunning(const QString &id) const
{
    const QList<FollowablePlayer> running = m_players.followablePlayers();
    return std::ranges::find(running, id, &FollowablePlayer::id) != running.end();
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "app/FollowMenu.h"

#include "music/followChoices.h"
#include "platform/DesktopEntries.h"
#include "platform/UserDefaults.h"
#include "widgets/literalTitle.h"

#include <QActionEvent>
#include <QActionGroup>
#include <QCoreApplication>
#include <QIcon>
#include <QImage>
#include <QMenu>
#include <QPixmap>

#include <algorithm>
#include <optional>
#include <utility>

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
    , m_separator(menu.addSeparator())
    , m_neverFollow(menu.addAction(QString()))
{
    connect(
        m_neverFollow, &QAction::triggered, this, [this] { m_players.neverFollow(m_neverFollow->data().toString()); });
    menu.installEventFilter(this);
    connect(&menu, &QMenu::aboutToShow, this, [this] {
        // Those of players that come while the menu is open are there from the start, and not visible.
        addEntries(mostChoices);
        m_showsIcons = true;
        fill();
    });
    const auto refillIfOpen = [this] {
        if (m_menu.isVisible()) {
            refill();
        }
    };
    connect(&m_players, &FollowablePlayers::followablePlayersChanged, this, refillIfOpen);
    connect(&m_desktopEntries, &DesktopEntries::factsKnown, this, [this](const QString &desktopEntry) {
        // A global menu bar shows the menu, which then is not visible here, but may be open.
        if (m_menu.isVisible()) {
            refill();
        } else if (m_showsIcons) {
            addIcon(desktopEntry);
        }
    });
    connect(&m_defaults, &UserDefaults::valueChanged, this, refillIfOpen);
    // A global menu bar reads the menu before it opens.
    fill();
}

bool FollowMenu::eventFilter(QObject *watched, QEvent *event)
{
    // An open menu measures all its items after the change of any.
    if (watched == &m_menu && event->type() == QEvent::ActionChanged && m_isRefilling) {
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void FollowMenu::fill()
{
    const QList<FollowChoice> choices = this->choices();
    addEntries(choices.size());
    for (qsizetype index = 0; index < m_entries.size(); ++index) {
        QAction &entry = *m_entries.at(index);
        entry.setIcon(QIcon());
        entry.setVisible(index < choices.size());
        if (entry.isVisible()) {
            show(choices.at(index), entry);
        }
    }
    offerNeverFollow();
}

/// Changes an open menu.
void FollowMenu::refill()
{
    m_isRefilling = true;
    QList<QAction *> gone;
    QList<QAction *> free;
    for (QAction *entry : std::as_const(m_entries)) {
        (entry->isVisible() ? gone : free).append(entry);
    }
    const QList<FollowChoice> choices = this->choices();
    for (const FollowChoice &choice : choices) {
        const auto entry = std::ranges::find(gone, choice.id, [](const QAction *action) { return action->data(); });
        if (entry != gone.end()) {
            QAction *shown = *entry;
            show(choice, *shown);
            gone.removeOne(shown);
        } else if (!free.isEmpty()) {
            show(choice, *free.takeFirst());
        }
    }
    for (QAction *entry : std::as_const(gone)) {
        entry->setEnabled(false);
    }
    m_neverFollow->setEnabled(isRunning(m_neverFollow->data().toString()));
    m_isRefilling = false;
    QActionEvent change(QEvent::ActionChanged, m_neverFollow);
    QCoreApplication::sendEvent(&m_menu, &change);
}

QList<FollowChoice> FollowMenu::choices() const
{
    return followChoices(m_players, m_defaults.stringForKey(SettingsKey::followedPlayer));
}

void FollowMenu::addEntries(qsizetype count)
{
    while (m_entries.size() < count) {
        auto *entry = new QAction(&m_menu);
        entry->setCheckable(true);
        entry->setActionGroup(m_group);
        entry->setIconVisibleInMenu(true);
        m_menu.insertAction(m_separator, entry);
        m_entries.append(entry);
        connect(entry, &QAction::triggered, this,
            [this, entry] { m_defaults.setValue(SettingsKey::followedPlayer, entry->data().toString()); });
    }
}

void FollowMenu::show(const FollowChoice &choice, QAction &entry)
{
    entry.setData(choice.id);
    entry.setText(literalTitle(choice.text));
    entry.setVisible(true);
    entry.setEnabled(true);
    entry.setChecked(choice.isChosen);
    QFont font = m_menu.font();
    font.setBold(choice.isFollowed);
    entry.setFont(font);
    showIcon(choice, entry);
}

/// Changes nothing but the icons of the players with `desktopEntry`.
void FollowMenu::addIcon(const QString &desktopEntry)
{
    const QList<FollowChoice> choices = this->choices();
    for (const FollowChoice &choice : choices) {
        if (choice.desktopEntry != desktopEntry) {
            continue;
        }
        const auto entry = std::ranges::find_if(std::as_const(m_entries),
            [&choice](const QAction *action) { return action->isVisible() && action->data() == choice.id; });
        if (entry != m_entries.cend()) {
            showIcon(choice, **entry);
        }
    }
}

void FollowMenu::showIcon(const FollowChoice &choice, QAction &entry)
{
    if (m_showsIcons && entry.icon().isNull() && !choice.desktopEntry.isEmpty()) {
        const std::optional<DesktopEntryFacts> facts = m_desktopEntries.facts(choice.desktopEntry);
        if (facts && facts->icon) {
            entry.setIcon(QIcon(QPixmap::fromImage(*facts->icon)));
        }
    }
}

void FollowMenu::offerNeverFollow()
{
    const std::optional<FollowablePlayer> followed = followedPlayer(m_players);
    m_separator->setVisible(followed.has_value());
    m_neverFollow->setVisible(followed.has_value());
    if (followed) {
        m_neverFollow->setText(literalTitle(neverFollowText(*followed)));
        m_neverFollow->setData(followed->id);
        m_neverFollow->setEnabled(true);
    }
}

bool FollowMenu::isRunning(const QString &id) const
{
    const QList<FollowablePlayer> running = m_players.followablePlayers();
    return std::ranges::find(running, id, &FollowablePlayer::id) != running.end();
}

} // namespace tunedeck

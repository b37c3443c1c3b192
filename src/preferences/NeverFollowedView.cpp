// SPDX-License-Identifier: MIT
#include "preferences/NeverFollowedView.h"

#include "music/menuText.h"
#include "preferences/PaneMetrics.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
constexpr int leastVisibleRows = 2; ///< no lower than the button
constexpr int mostVisibleRows = 4;

QString idOf(const QListWidgetItem &item)
{
    return item.data(Qt::UserRole).toString();
}
} // namespace

NeverFollowedView::NeverFollowedView(FollowablePlayers &players, QWidget *parent)
    : QWidget(parent)
    , m_players(players)
    , m_list(new QListWidget(this))
    , m_followAgainButton(
          new QPushButton(tr("Follow &Again", "Button in the General pane: take a player out of the list"), this))
{
    m_list->setAccessibleName(tr("Players that are never followed", "For accessibility: a list in the General pane"));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(PaneMetrics::gap);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_followAgainButton, 0, Qt::AlignTop);
    connect(m_followAgainButton, &QPushButton::clicked, this, &NeverFollowedView::followAgain);
    connect(&m_players, &FollowablePlayers::followablePlayersChanged, this, &NeverFollowedView::refresh);
    fill();
}

bool NeverFollowedView::isEmpty() const
{
    return m_list->count() == 0;
}

void NeverFollowedView::refresh()
{
    // The signal comes for the running players, too.
    if (m_players.neverFollowedPlayers() != m_shown) {
        fill();
    }
}

void NeverFollowedView::fill()
{
    m_shown = m_players.neverFollowedPlayers();
    fillList();
    const int rows = std::clamp(m_list->count(), leastVisibleRows, mostVisibleRows);
    m_list->setFixedHeight(
        rows * std::max(m_list->sizeHintForRow(0), fontMetrics().height()) + 2 * m_list->frameWidth());
    m_followAgainButton->setEnabled(m_list->currentItem());
    Q_EMIT changed();
}

/// The selection stays on its player, or else in its row.
void NeverFollowedView::fillList()
{
    const QString selected = m_list->currentItem() ? idOf(*m_list->currentItem()) : QString();
    int row = std::max(m_list->currentRow(), 0);
    m_list->clear();
    for (const NeverFollowedPlayer &player : std::as_const(m_shown)) {
        auto *item = new QListWidgetItem(menuText(player.name), m_list);
        item->setData(Qt::UserRole, player.id);
        if (player.id == selected) {
            row = m_list->row(item);
        }
    }
    m_list->setCurrentRow(std::min(row, m_list->count() - 1));
}

void NeverFollowedView::followAgain()
{
    m_players.allowToFollow(idOf(*m_list->currentItem()));
}

} // namespace tunedeck

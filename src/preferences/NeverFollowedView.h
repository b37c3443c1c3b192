// SPDX-License-Identifier: MIT
#pragma once

#include "music/FollowablePlayers.h"

#include <QList>
#include <QWidget>

class QListWidget;
class QPushButton;

namespace tunedeck {

/// The list of the players that are never followed, and the button that takes one of them back.
class NeverFollowedView : public QWidget {
    Q_OBJECT

public:
    /// `players` must outlive the view.
    explicit NeverFollowedView(FollowablePlayers &players, QWidget *parent = nullptr);

    [[nodiscard]] QListWidget &list() { return *m_list; }
    [[nodiscard]] QPushButton &followAgainButton() { return *m_followAgainButton; }
    [[nodiscard]] bool isEmpty() const;

Q_SIGNALS:
    /// isEmpty() may have changed.
    void changed();

private:
    void refresh();
    void fill();
    void fillList();
    void followAgain();

    FollowablePlayers &m_players;
    QList<NeverFollowedPlayer> m_shown;
    QListWidget *m_list;
    QPushButton *m_followAgainButton;
};

} // namespace tunedeck

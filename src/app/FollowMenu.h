// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QActionGroup;
class QMenu;

namespace tunedeck {

class DesktopEntries;
class FollowablePlayers;
class UserDefaults;
struct FollowChoice;

/// The menu from which the user chooses the player to follow, or leaves the choice to the program, and the command that
/// leaves a player out for good. It is filled when it opens. The player that is followed now is bold.
///
/// An open menu follows the players, but no item moves or changes its meaning under the user's hand: new players are
/// added at the end of the list, and those that have gone are disabled until the menu closes.
class FollowMenu : public QObject {
    Q_OBJECT

public:
    struct Environment {
        FollowablePlayers &players;
        UserDefaults &defaults;
        DesktopEntries &desktopEntries;
    };

    /// Fills `menu`. All references must outlive this object.
    FollowMenu(QMenu &menu, const Environment &environment, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    void refill();
    [[nodiscard]] QList<FollowChoice> choices() const;
    /// Up to `count` of them in all.
    void addEntries(qsizetype count);
    void show(const FollowChoice &choice, QAction &entry);
    void addIcon(const QString &desktopEntry);
    void showIcon(const FollowChoice &choice, QAction &entry);
    void offerNeverFollow();
    [[nodiscard]] bool isRunning(const QString &id) const;

    QMenu &m_menu;
    FollowablePlayers &m_players;
    UserDefaults &m_defaults;
    DesktopEntries &m_desktopEntries;
    QActionGroup *m_group;
    QList<QAction *> m_entries; ///< in the order of the menu; the data() of a visible one is its player's identifier
    QAction *m_separator; ///< below the entries
    QAction *m_neverFollow; ///< its data() is the player's identifier
    bool m_isRefilling = false;
    /// From when the menu first opens. Reading the desktop entries loads a library.
    bool m_showsIcons = false;
};

} // namespace tunedeck

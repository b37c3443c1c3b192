// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveWay.h"
#include "music/FollowablePlayers.h"
#include "music/MusicConnectorTrack.h"
#include "music/followChoices.h"
#include "music/outputChoices.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QAction;
class QMenu;
class QObject;

namespace tunedeck {

/// The contents of the dock menu: the titles and the commands of its items.
struct DockMenuItems {
    Q_DECLARE_TR_FUNCTIONS(tunedeck::DockMenuItems)

public:
    /// The commands of the items. They do nothing once `receiver` is destroyed.
    struct Commands {
        const QObject *receiver;
        std::function<void()> openMusicApp;
        std::function<void()> playPause;
        std::function<void()> next;
        std::function<void()> previous;
        std::function<void()> showPlayer;
        std::function<void()> toggleKeepAbove;
        /// Follows the player with this identifier; the program chooses one if it is empty.
        std::function<void(const QString &id)> follow;
        std::function<void(const QString &id)> neverFollow;
        /// Moves the player's sound to the output with this identifier; to the default one if it is empty.
        std::function<void(const QString &id)> playThrough;
        /// Returns whether the command of `item`, which its object name identifies, is enabled.
        std::function<bool(const QAction &item)> validate;
    };

    std::optional<MusicConnectorTrack> track;
    bool isMusicAppRunning = false;
    bool canOpenMusicApp = true;
    bool isLiveStream = false; ///< such a stream has no next and no previous track
    QString playPauseTitle;
    QString playerName; ///< may be empty
    bool isKeptAbove = false;
    AboveWay aboveWay = AboveWay::Window; ///< where there is none, the user can only switch it off
    QList<FollowChoice> followChoices; ///< of a submenu, which needs two
    std::optional<FollowablePlayer> followedPlayer;
    std::optional<OutputChoices> outputChoices; ///< of a submenu; none without a player or a sound server
    /// The name of the icon of the desktop entry with this identifier; empty if it is not known.
    std::function<QString(const QString &desktopEntry)> iconName;

    [[nodiscard]] std::unique_ptr<QMenu> menu(const Commands &commands) const;

private:
    void addTrackBlock(QMenu &menu) const;
    void addTransportBlock(QMenu &menu, const Commands &commands) const;
    void addShowPlayerItem(QMenu &menu, const Commands &commands) const;
    void addOutputMenu(QMenu &menu, const Commands &commands) const;
    void addKeepAboveItem(QMenu &menu, const Commands &commands) const;
    void addFollowMenu(QMenu &menu, const Commands &commands) const;
};

} // namespace tunedeck

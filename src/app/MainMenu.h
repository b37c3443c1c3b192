// SPDX-License-Identifier: MIT
#pragma once

#include "app/FollowMenu.h"
#include "app/MenuValidation.h"

#include <QKeySequence>
#include <QList>
#include <QMenu>
#include <QObject>

namespace tunedeck {

class AppDelegate;
class ViewController;
class PlaylistViewController;
class WindowController;

/// The program's menus: the context menu of the main window, and on desktops that have one, the global menu bar. The
/// shortcuts of what concerns the main window belong to that window, the others work in every window of the program.
class MainMenu : public QObject {
    Q_OBJECT

public:
    /// All references must outlive the menu.
    MainMenu(AppDelegate &delegate, WindowController &windowController, ViewController &viewController,
        PlaylistViewController &playlistViewController, const FollowMenu::Environment &followEnvironment,
        QObject *parent = nullptr);

    [[nodiscard]] QAction &playPauseMenuItem() const;
    /// The item with this identifier; null if there is none.
    [[nodiscard]] QAction *item(const QString &identifier) const;
    [[nodiscard]] QMenu &contextMenu() { return m_contextMenu; }
    [[nodiscard]] MenuValidation &validation() { return m_validation; }

    /// Adds a command to change between Wayland and XWayland. `isUsed`: it runs through XWayland now.
    void offerXWayland(bool isUsed);

Q_SIGNALS:
    void updateCheckRequested();
    void xWaylandRequested(bool use);

private:
    struct Command {
        QString title;
        QString identifier;
        QList<QKeySequence> shortcuts = {};
        QList<MenuValidation::Validator> validators = {};
        Qt::ShortcutContext shortcutContext = Qt::WindowShortcut;
    };

    /// `position` is in the main window, in points.
    void popUpAt(QPoint position);
    void buildApplicationMenu(QMenu &menu);
    void buildFileMenu(QMenu &menu);
    void addShowPlayerItem(QMenu &menu);
    void buildControlsMenu(QMenu &menu);
    void buildFollowMenu(QMenu &menu);
    void buildWindowMenu(QMenu &menu);
    void buildHelpMenu(QMenu &menu);
    QMenu &addMenu(const QString &title);
    QAction *addItem(QMenu &menu, const Command &command);
    void addTransportItem(QMenu &menu, const Command &command, void (AppDelegate::*action)());
    QAction *addKeys(const QString &identifier, const QList<QKeySequence> &keys);
    void addKeepAboveItem(QMenu &menu);
    void addStopWaitingItem();
    void addVolumeItem(QMenu &menu, const Command &command);
    void addPlayThroughMenu(QMenu &menu);

    AppDelegate &m_delegate;
    WindowController &m_windowController;
    ViewController &m_viewController;
    PlaylistViewController &m_playlistViewController;
    FollowMenu::Environment m_followEnvironment;
    MenuValidation::Validator m_explains; ///< says in the tooltip why Music cannot take the command
    MenuValidation::Validator m_delegateValidates;
    MenuValidation::Validator m_windowControllerValidates;
    MenuValidation::Validator m_viewControllerValidates;
    MenuValidation::Validator m_playlistViewControllerValidates;
    MenuValidation m_validation;
    QMenu m_contextMenu;
    QMenu *m_windowMenu = nullptr;
};

} // namespace tunedeck

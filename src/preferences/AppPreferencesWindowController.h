// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/AppPreferences.h"
#include "preferences/AppPreferencesWindow.h"
#include "preferences/PreferencesToolbarItem.h"
#include "widgets/ResizeAnimation.h"

#include <QAction>
#include <QActionGroup>
#include <QList>
#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <map>
#include <memory>

class QGraphicsOpacityEffect;

namespace tunedeck {

class PreferencesPaneController;
class DesktopSettings;
class FollowablePlayers;
class Updater;
class UserDefaults;

/// Owns the preferences window and shows the pane that is selected in its toolbar. Creates the controller of a pane
/// when the pane is first selected, and keeps it. The window takes the height of each pane; its top edge stays. Ctrl+W
/// closes the window by way of the pane on show.
class AppPreferencesWindowController : public QObject {
    Q_OBJECT

public:
    /// The width of every pane, in points. A large font may need more.
    static constexpr int windowWidth = 450;

    /// The objects that the panes show and change. All must outlive the controller.
    struct Environment {
        UserDefaults &defaults;
        FollowablePlayers &players;
        Updater &updater;
        DesktopSettings &desktopSettings;
    };

    /// The window has the panes General, Interface and Updates. Does not show it.
    explicit AppPreferencesWindowController(const Environment &environment, QObject *parent = nullptr);
    /// If a pane's symbol has no image, leaves out this pane and those after it, and shows no pane.
    AppPreferencesWindowController(
        const AppPreferences &description, UserDefaults &defaults, QObject *parent = nullptr);
    ~AppPreferencesWindowController() override;

    [[nodiscard]] AppPreferencesWindow &window() { return m_window; }
    [[nodiscard]] const QList<PreferencesToolbarItem> &toolbarItems() const { return m_toolbarItems; }

    /// All three return the identifiers of all items, in the toolbar's order.
    [[nodiscard]] QStringList toolbarDefaultItemIdentifiers() const;
    [[nodiscard]] QStringList toolbarAllowedItemIdentifiers() const;
    [[nodiscard]] QStringList toolbarSelectableItemIdentifiers() const;
    /// Creates a new action on every call. Null for an unknown identifier.
    [[nodiscard]] std::unique_ptr<QAction> toolbarItem(const QString &identifier);

    /// Selects the pane that `sender`, a toolbar item, names. Does nothing if there is no such pane.
    void toolbarItemClicked(const QObject &sender);

public Q_SLOTS:
    /// Brings the window to the front with the pane that was shown last.
    void showWindow();
    /// The window takes the height of a pane without an animation under reduced motion.
    void setMotionReduced(bool isReduced) { m_sizeAnimation.setMotionReduced(isReduced); }

Q_SIGNALS:
    /// The user wants to read the page at `anchor` in the help book `book`.
    void helpRequested(const QString &anchor, const QString &book);

protected:
    /// Watches whether the shown pane needs another size.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool collectToolbarItems();
    void installToolbar();
    void setUpAnimation();
    void addCloseCommand();
    void closeWindow();
    [[nodiscard]] const PreferencesToolbarItem *itemWith(const QString &identifier) const;
    [[nodiscard]] PreferencesPaneController *viewController(const QString &identifier);
    void switchToPane(const QString &identifier);
    void markSelectedItem();
    void fitWindow();
    void resizeContent(QSize size);
    void finishAnimation();

    AppPreferences m_description;
    QList<PreferencesToolbarItem> m_toolbarItems;
    AppPreferencesWindow m_window;
    QWidget *m_contentView; ///< the window's
    QGraphicsOpacityEffect *m_contentHiding; ///< the content view's
    QActionGroup m_installedItems{this};
    QAction m_closeCommand{this};
    /// Declared after the window: the views must leave it before it is destroyed.
    std::map<QString, std::unique_ptr<PreferencesPaneController>> m_viewControllers;
    QString m_selectedIdentifier;
    QWidget *m_shownView = nullptr;
    QSize m_fittingSize;
    ResizeAnimation m_sizeAnimation{m_window};
};

} // namespace tunedeck

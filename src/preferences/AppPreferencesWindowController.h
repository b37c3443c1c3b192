// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/AppPreferences.h"
#include "preferences/AppPreferencesWindow.h"
#include "preferences/PreferencesToolbarItem.h"
#include "widgets/ResizeAnimation.h"

#include <QActionGroup>
#include <QList>
#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <map>
#include <memory>

class QAction;
class QGraphicsOpacityEffect;

namespace tunedeck {

class PreferencesPaneController;
class SeenPlayers;
class Updater;
class UserDefaults;

/// Owns the preferences window and shows in it the pane that is selected in its toolbar. The controller of a pane is
/// made when the pane is first selected, and kept. The window gets as high as each pane, at its lower edge.
class AppPreferencesWindowController : public QObject {
    Q_OBJECT

public:
    /// The width of every pane, in points; more only where a large font needs it.
    static constexpr int windowWidth = 450;

    /// What the panes show and change; all must outlive the controller.
    struct Surroundings {
        UserDefaults &defaults;
        SeenPlayers &players;
        Updater &updater;
    };

    /// The window has the panes General, Interface and Updates, and is not shown yet.
    explicit AppPreferencesWindowController(const Surroundings &surroundings, QObject *parent = nullptr);
    /// Where a pane's symbol has no image, this pane and those after it are left out, and no pane is shown.
    AppPreferencesWindowController(
        const AppPreferences &description, UserDefaults &defaults, QObject *parent = nullptr);
    ~AppPreferencesWindowController() override;

    [[nodiscard]] AppPreferencesWindow &window();
    [[nodiscard]] const QList<PreferencesToolbarItem> &toolbarItems() const;

    /// All three give the identifiers of the items, in the toolbar's order.
    [[nodiscard]] QStringList toolbarDefaultItemIdentifiers() const;
    [[nodiscard]] QStringList toolbarAllowedItemIdentifiers() const;
    [[nodiscard]] QStringList toolbarSelectableItemIdentifiers() const;
    /// Made anew on every call; null for an identifier that no item has.
    [[nodiscard]] std::unique_ptr<QAction> toolbarItem(const QString &identifier);

    /// Selects the pane that `sender` names, where it is a toolbar item. A pane that there is not leaves the window as
    /// it is.
    void toolbarItemClicked(const QObject &sender);

public Q_SLOTS:
    /// Brings it to the front, with the pane that was shown last.
    void showWindow();
    /// With `isReduced` the window has the height of the next pane at once.
    void setMotionReduced(bool isReduced);

Q_SIGNALS:
    /// The user wants to read the page at `anchor` in the help book `book`.
    void helpRequested(const QString &anchor, const QString &book);

protected:
    /// Watches the shown pane for a change of the size that it needs.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool collectToolbarItems();
    void installToolbar();
    void setUpAnimation();
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
    /// After the window: their views leave it before it goes.
    std::map<QString, std::unique_ptr<PreferencesPaneController>> m_viewControllers;
    QString m_selectedIdentifier;
    QWidget *m_shownView = nullptr;
    QSize m_fittingSize;
    ResizeAnimation m_sizeAnimation{m_window};
};

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#pragma once

#include "dock/DockMenuCalls.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QHash>
#include <QLatin1String>
#include <QList>
#include <QMenu>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <utility>

class QAction;

namespace tunedeck {

/// D-Bus signature (ia{sv}).
struct DockMenuItem {
    int id = 0; ///< 0 is the menu itself
    QVariantMap properties;

    bool operator==(const DockMenuItem &) const = default;
};

/// D-Bus signature (ia{sv}av).
struct DockMenuLayout {
    DockMenuItem item;
    QVariantList children; ///< layouts
};

/// D-Bus signature (isvu).
struct DockMenuEvent {
    int id = 0;
    QString type;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const DockMenuItem &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DockMenuItem &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DockMenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, DockMenuLayout &layout);
QDBusArgument &operator<<(QDBusArgument &argument, const DockMenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, DockMenuEvent &event);

/// Serves the menu of the program's icon to docks over com.canonical.dbusmenu, and announces it to them. After a dock
/// has read the menu, the server reports the next change to it. It builds and sends nothing before a dock reads, nor
/// between such a report and the next reading.
///
/// An action keeps its item id when the menu is rebuilt if it is in the same menu and has the same object name. An
/// action without an object name keeps it if it is of the same kind and in the same position. An action of an exclusive
/// group is a radio item. The data() of an action, a text, is the name of its icon.
class DockMenuServer : public QObject {
    Q_OBJECT

public:
    static constexpr QLatin1String interface{"com.canonical.dbusmenu"};

    using Builder = std::function<std::unique_ptr<QMenu>()>;

    /// `build` makes a new menu whenever one is needed. The constructor announces the menu to docks.
    DockMenuServer(const QDBusConnection &bus, Builder build, QObject *parent = nullptr);

    [[nodiscard]] uint version() const;
    [[nodiscard]] QString textDirection() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] QStringList iconThemePath() const;

    // Docks ask for these over D-Bus.
    uint GetLayout(
        int parentId, int recursionDepth, const QStringList &propertyNames, tunedeck::DockMenuLayout &layout);
    QList<tunedeck::DockMenuItem> GetGroupProperties(const QList<int> &ids, const QStringList &propertyNames);
    QVariant GetProperty(int id, const QString &name);
    void Event(int id, const QString &eventId);
    QList<int> EventGroup(const QList<tunedeck::DockMenuEvent> &events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);
    /// Whether one of these was asked for an item or property that does not exist, since the last call.
    [[nodiscard]] bool takeRefusal() { return std::exchange(m_isRefused, false); }

public Q_SLOTS:
    /// Call this when the menu's contents may have changed.
    void update();

private:
    struct Tree {
        QList<DockMenuItem>
            items; ///< the menu itself, then its actions in their order, each before those of its submenu
        QHash<int, QList<int>> children; ///< by the id of a menu

        bool operator==(const Tree &) const = default;
    };

    void announce();
    /// Returns whether the menu has changed.
    bool rebuild();
    /// Adds the items of `menu`, whose id is `menuId` and whose key is `menuKey`, and those of its submenus.
    void addItems(const QMenu &menu, int menuId, const QString &menuKey, Tree &tree);
    void forgetOldKeys();
    [[nodiscard]] const QList<DockMenuItem> &items();
    [[nodiscard]] DockMenuLayout layoutOf(const DockMenuItem &item, int depth, const QStringList &propertyNames);
    [[nodiscard]] bool isMenu(int id) const { return m_tree.children.contains(id); }
    [[nodiscard]] int idOf(const QString &key);
    [[nodiscard]] const DockMenuItem *item(int id);
    void click(int id);
    void reportChange();

    QDBusConnection m_bus;
    DockMenuCalls m_calls;
    Builder m_build;
    QDBusServiceWatcher m_unityWatcher;
    QTimer m_updateTimer{this};
    std::unique_ptr<QMenu> m_menu;
    Tree m_tree;
    QHash<int, QAction *> m_actions; ///< the actions by item id
    QHash<QString, int> m_ids; ///< by the key of an item
    int m_lastId = 0;
    uint m_revision = 0;
    bool m_isRead = false;
    bool m_isRefused = false;
};

} // namespace tunedeck

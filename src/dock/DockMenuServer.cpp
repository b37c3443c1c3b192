// SPDX-License-Identifier: MIT
#include "dock/DockMenuServer.h"

#include "platform/BundleInfo.h"

#include <QAction>
#include <QActionGroup>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QGuiApplication>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tunedeck {

namespace {
constexpr int rootId = 0;
constexpr uint protocolVersion = 3;
constexpr int longestLabel = 100;
constexpr QLatin1String menuPath("/org/tunedeck/Tunedeck/DockMenu");
constexpr QLatin1String unityService("com.canonical.Unity");
constexpr QLatin1String clicked("clicked");
constexpr QLatin1String childrenDisplay("children-display");
constexpr QLatin1String submenu("submenu");
/// Players come and go, so more keys than this are not kept beside those of the items on show.
constexpr qsizetype mostKeys = 1'000;

/// Converts Qt's mark of a mnemonic, "&", to that of docks, "_". Cuts long texts and joins lines, since a player may
/// send any text as a title.
QString dockLabel(const QString &text)
{
    QString label;
    bool isMarked = false;
    for (const QChar character : text) {
        if (label.size() >= longestLabel && !character.isLowSurrogate()) {
            return label + u'…';
        }
        if (character == u'&' && !isMarked) {
            isMarked = true;
            continue;
        }
        if (character == u'_') {
            label += QLatin1String("__");
        } else {
            if (isMarked && character != u'&') {
                label += u'_';
            }
            label += character.category() == QChar::Other_Control ? u' ' : character;
        }
        isMarked = false;
    }
    return label;
}

/// All properties, even those with their default value: docks keep the former value of a missing one.
QVariantMap propertiesOf(const QAction &action)
{
    QVariantMap properties{
        {QStringLiteral("type"), action.isSeparator() ? QStringLiteral("separator") : QStringLiteral("standard")},
        {QStringLiteral("label"), dockLabel(action.text())},
        {QStringLiteral("enabled"), action.isEnabled()},
        {QStringLiteral("visible"), action.isVisible()},
    };
    if (const QVariant iconName = action.data(); iconName.isValid()) {
        properties.insert(QStringLiteral("icon-name"), iconName.toString());
    }
    if (action.menu()) {
        properties.insert(childrenDisplay, QString(submenu));
    }
    if (action.isCheckable()) {
        const bool isRadio = action.actionGroup() && action.actionGroup()->isExclusive();
        properties.insert(
            QStringLiteral("toggle-type"), isRadio ? QStringLiteral("radio") : QStringLiteral("checkmark"));
        properties.insert(QStringLiteral("toggle-state"), action.isChecked() ? 1 : 0);
    }
    return properties;
}

/// The key of `action` among those of its menu.
QString keyOf(const QAction &action, qsizetype position)
{
    // Docks may not support an item that turns into a separator.
    const QString place = (action.isSeparator() ? u'-' : u'+') + QString::number(position);
    return action.objectName().isEmpty() ? place : action.objectName();
}

/// Keeps only the named properties, or all if there are no names.
DockMenuItem reduced(const DockMenuItem &item, const QStringList &propertyNames)
{
    if (propertyNames.isEmpty()) {
        return item;
    }
    DockMenuItem result{item.id, {}};
    for (auto property = item.properties.begin(); property != item.properties.end(); ++property) {
        if (propertyNames.contains(property.key())) {
            result.properties.insert(property.key(), property.value());
        }
    }
    return result;
}

void registerTypes()
{
    qDBusRegisterMetaType<DockMenuItem>();
    qDBusRegisterMetaType<QList<DockMenuItem>>();
    qDBusRegisterMetaType<DockMenuLayout>();
    qDBusRegisterMetaType<DockMenuEvent>();
    qDBusRegisterMetaType<QList<DockMenuEvent>>();
}
} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const DockMenuItem &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DockMenuItem &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DockMenuLayout &layout)
{
    argument.beginStructure();
    argument << layout.item.id << layout.item.properties << layout.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DockMenuLayout &layout)
{
    argument.beginStructure();
    argument >> layout.item.id >> layout.item.properties >> layout.children;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DockMenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.type << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DockMenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.type >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

DockMenuServer::DockMenuServer(const QDBusConnection &bus, Builder build, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_calls(bus, menuPath, *this)
    , m_build(std::move(build))
    , m_unityWatcher(unityService, bus, QDBusServiceWatcher::WatchForRegistration, this)
{
    registerTypes();
    m_updateTimer.setSingleShot(true);
    m_updateTimer.setInterval(0);
    connect(&m_updateTimer, &QTimer::timeout, this, &DockMenuServer::rebuild);
    connect(&m_unityWatcher, &QDBusServiceWatcher::serviceRegistered, this, &DockMenuServer::announce);
    announce();
}

uint DockMenuServer::version() const
{
    return protocolVersion;
}

QString DockMenuServer::textDirection() const
{
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

QString DockMenuServer::status() const
{
    return QStringLiteral("normal");
}

QStringList DockMenuServer::iconThemePath() const
{
    return {};
}

void DockMenuServer::update()
{
    // One change of the track emits several signals.
    if (m_isRead && !m_updateTimer.isActive()) {
        m_updateTimer.start();
    }
}

uint DockMenuServer::GetLayout(
    int parentId, int recursionDepth, const QStringList &propertyNames, tunedeck::DockMenuLayout &layout)
{
    rebuild();
    const DockMenuItem *parent = item(parentId);
    if (!parent) {
        m_isRefused = true;
        return m_revision;
    }
    m_isRead = true;
    layout = layoutOf(*parent, recursionDepth, propertyNames);
    return m_revision;
}

QList<tunedeck::DockMenuItem> DockMenuServer::GetGroupProperties(
    const QList<int> &ids, const QStringList &propertyNames)
{
    QList<DockMenuItem> group;
    for (const DockMenuItem &item : items()) {
        if (ids.isEmpty() || ids.contains(item.id)) {
            group.append(reduced(item, propertyNames));
        }
    }
    return group;
}

QVariant DockMenuServer::GetProperty(int id, const QString &name)
{
    const DockMenuItem *found = item(id);
    if (!found || !found->properties.contains(name)) {
        m_isRefused = true;
        return {};
    }
    return found->properties.value(name);
}

void DockMenuServer::Event(int id, const QString &eventId)
{
    if (!item(id)) {
        m_isRefused = true;
    } else if (eventId == clicked) {
        click(id);
    }
}

QList<int> DockMenuServer::EventGroup(const QList<tunedeck::DockMenuEvent> &events)
{
    QList<int> unknown;
    QList<int> clickedItems;
    for (const DockMenuEvent &event : events) {
        if (!item(event.id)) {
            unknown.append(event.id);
        } else if (event.type == clicked && !clickedItems.contains(event.id)) {
            clickedItems.append(event.id);
        }
    }
    if (!events.isEmpty() && unknown.size() == events.size()) {
        m_isRefused = true;
        return {};
    }
    for (const int id : clickedItems) {
        click(id);
    }
    return unknown;
}

bool DockMenuServer::AboutToShow(int id)
{
    const bool hasChanged = rebuild();
    if (!item(id)) {
        m_isRefused = true;
    }
    return hasChanged && isMenu(id);
}

QList<int> DockMenuServer::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    const bool hasChanged = rebuild();
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(idErrors), [this](int id) { return !item(id); });
    if (!ids.isEmpty() && idErrors.size() == ids.size()) {
        m_isRefused = true;
    }
    QList<int> changed;
    if (hasChanged) {
        std::ranges::copy_if(ids, std::back_inserter(changed), [this](int id) { return isMenu(id); });
    }
    return changed;
}

void DockMenuServer::announce()
{
    QDBusMessage message = QDBusMessage::createSignal(
        menuPath, QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    message << QStringLiteral("application://%1.desktop").arg(applicationId)
            << QVariantMap{{QStringLiteral("quicklist"), QString(menuPath)}};
    m_bus.send(message);
}

bool DockMenuServer::rebuild()
{
    m_actions.clear();
    m_menu = m_build();
    Tree tree{{{rootId, {{childrenDisplay, QString(submenu)}}}}, {}};
    addItems(*m_menu, rootId, QString(), tree);
    forgetOldKeys();
    if (tree == std::exchange(m_tree, tree)) {
        return false;
    }
    ++m_revision;
    if (std::exchange(m_isRead, false)) {
        reportChange();
    }
    return true;
}

void DockMenuServer::addItems(const QMenu &menu, int menuId, const QString &menuKey, Tree &tree)
{
    tree.children.insert(menuId, {});
    const QList<QAction *> actions = menu.actions();
    for (qsizetype position = 0; position < actions.size(); ++position) {
        QAction *action = actions.at(position);
        QString key = menuKey + keyOf(*action, position);
        while (m_actions.contains(idOf(key))) {
            // Two players may have one identifier.
            key += u'+';
        }
        const int id = idOf(key);
        tree.items.append({id, propertiesOf(*action)});
        tree.children[menuId].append(id);
        m_actions.insert(id, action);
        if (action->menu()) {
            addItems(*action->menu(), id, key + u'/', tree);
        }
    }
}

void DockMenuServer::forgetOldKeys()
{
    if (m_ids.size() > mostKeys) {
        m_ids.removeIf([this](const QHash<QString, int>::iterator key) { return !m_actions.contains(key.value()); });
    }
}

const QList<DockMenuItem> &DockMenuServer::items()
{
    if (!m_menu) {
        rebuild();
    }
    return m_tree.items;
}

DockMenuLayout DockMenuServer::layoutOf(const DockMenuItem &item, int depth, const QStringList &propertyNames)
{
    DockMenuLayout layout{reduced(item, propertyNames), {}};
    if (depth == 0) {
        return layout;
    }
    const QList<int> children = m_tree.children.value(item.id);
    for (const int id : children) {
        // A depth below 0 is no limit.
        const DockMenuLayout child = layoutOf(*this->item(id), std::max(depth - 1, -1), propertyNames);
        layout.children.append(QVariant::fromValue(child));
    }
    return layout;
}

int DockMenuServer::idOf(const QString &key)
{
    const auto known = m_ids.constFind(key);
    return known != m_ids.constEnd() ? *known : *m_ids.insert(key, ++m_lastId);
}

const DockMenuItem *DockMenuServer::item(int id)
{
    const QList<DockMenuItem> &all = items();
    const auto found = std::ranges::find(all, id, &DockMenuItem::id);
    return found == all.end() ? nullptr : &*found;
}

void DockMenuServer::click(int id)
{
    if (QAction *action = m_actions.value(id)) {
        action->trigger();
    }
}

void DockMenuServer::reportChange()
{
    QDBusMessage signal = QDBusMessage::createSignal(menuPath, interface, QStringLiteral("LayoutUpdated"));
    signal << m_revision << rootId;
    m_bus.send(signal);
}

} // namespace tunedeck

// SPDX-License-Identifier: MIT
#include "preferences/AppPreferencesWindowController.h"

#include "platform/windowSystem.h"
#include "preferences/InterfacePreferencesViewController.h"
#include "preferences/PreferencesViewController.h"
#include "preferences/SymbolIcon.h"
#include "preferences/UpdatePreferencesViewController.h"
#include "widgets/bringToFront.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QLayout>
#include <QToolBar>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
constexpr QLatin1String generalPane{"General"};
constexpr QLatin1String interfacePane{"Interface"};
constexpr QLatin1String updatesPane{"Updates"};
constexpr int imageSize = 24;

std::unique_ptr<PreferencesPaneController> instantiateController(
    const AppPreferencesWindowController::Environment &environment, const QString &identifier)
{
    if (identifier == generalPane) {
        return std::make_unique<PreferencesViewController>(
            environment.defaults, environment.players, environment.desktopSettings);
    }
    if (identifier == interfacePane) {
        return std::make_unique<InterfacePreferencesViewController>(environment.defaults, showsWindowIcons());
    }
    if (identifier == updatesPane) {
        return std::make_unique<UpdatePreferencesViewController>(environment.updater);
    }
    return nullptr;
}

AppPreferences appPreferences(const AppPreferencesWindowController::Environment &environment)
{
    return {
        {
            {generalPane, AppPreferencesWindowController::tr("General", "Title for General tab"),
                QStringLiteral("gearshape")},
            {interfacePane, AppPreferencesWindowController::tr("Interface", "Title for Interface tab"),
                QStringLiteral("macwindow")},
            {updatesPane, AppPreferencesWindowController::tr("Updates", "Title for Updates tab"),
                QStringLiteral("arrow.triangle.2.circlepath")},
        },
        symbolIcon,
        [environment](const QString &identifier) { return instantiateController(environment, identifier); },
    };
}

QSize fittingSize(const QWidget &view)
{
    const int width = std::max(AppPreferencesWindowController::windowWidth, view.minimumSizeHint().width());
    return {width, view.hasHeightForWidth() ? view.heightForWidth(width) : view.sizeHint().height()};
}
} // namespace

AppPreferencesWindowController::AppPreferencesWindowController(const Environment &environment, QObject *parent)
    : AppPreferencesWindowController(appPreferences(environment), environment.defaults, parent)
{
}

AppPreferencesWindowController::AppPreferencesWindowController(
    const AppPreferences &description, UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_description(description)
    , m_window(defaults)
    , m_contentView(new QWidget)
    , m_contentHiding(new QGraphicsOpacityEffect(m_contentView))
{
    m_window.setCentralWidget(m_contentView);
    m_window.layout()->setSizeConstraint(QLayout::SetFixedSize);
    setUpAnimation();
    addCloseCommand();
    if (!collectToolbarItems() || m_toolbarItems.isEmpty()) {
        return;
    }
    installToolbar();
    switchToPane(m_toolbarItems.first().identifier);
    markSelectedItem();
}

AppPreferencesWindowController::~AppPreferencesWindowController() = default;

QStringList AppPreferencesWindowController::toolbarDefaultItemIdentifiers() const
{
    QStringList identifiers;
    for (const PreferencesToolbarItem &item : m_toolbarItems) {
        identifiers.append(item.identifier);
    }
    return identifiers;
}

QStringList AppPreferencesWindowController::toolbarAllowedItemIdentifiers() const
{
    return toolbarDefaultItemIdentifiers();
}

QStringList AppPreferencesWindowController::toolbarSelectableItemIdentifiers() const
{
    return toolbarDefaultItemIdentifiers();
}

std::unique_ptr<QAction> AppPreferencesWindowController::toolbarItem(const QString &identifier)
{
    const PreferencesToolbarItem *item = itemWith(identifier);
    if (!item) {
        return nullptr;
    }
    auto action = std::make_unique<QAction>(item->image, item->name);
    action->setObjectName(identifier);
    action->setCheckable(true);
    connect(action.get(), &QAction::triggered, this, [this, sender = action.get()] { toolbarItemClicked(*sender); });
    return action;
}

void AppPreferencesWindowController::toolbarItemClicked(const QObject &sender)
{
    if (!qobject_cast<const QAction *>(&sender)) {
        return;
    }
    switchToPane(sender.objectName());
    markSelectedItem();
}

void AppPreferencesWindowController::showWindow()
{
    bringToFront(m_window);
}

bool AppPreferencesWindowController::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_shownView && event->type() == QEvent::LayoutRequest) {
        fitWindow();
    }
    return QObject::eventFilter(watched, event);
}

/// Returns whether all symbols have an image.
bool AppPreferencesWindowController::collectToolbarItems()
{
    for (const AppPreferences::Pane &pane : std::as_const(m_description.panes)) {
        const QIcon image = m_description.symbolImage(pane.symbol);
        if (image.isNull()) {
            return false;
        }
        m_toolbarItems.append({pane.identifier, pane.name, image});
    }
    return true;
}

void AppPreferencesWindowController::installToolbar()
{
    QToolBar *toolbar = m_window.addToolBar(tr("Panes", "For accessibility: the toolbar of the preferences window"));
    toolbar->setObjectName(QStringLiteral("PreferencesWindowToolbar"));
    toolbar->setMovable(false);
    toolbar->setIconSize({imageSize, imageSize});
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    const QStringList identifiers = toolbarDefaultItemIdentifiers();
    for (const QString &identifier : identifiers) {
        QAction *item = toolbarItem(identifier).release();
        item->setParent(toolbar);
        m_installedItems.addAction(item);
        toolbar->addAction(item);
        toolbar->widgetForAction(item)->setFocusPolicy(Qt::TabFocus);
    }
    toolbar->setVisible(identifiers.size() >= 2);
}

void AppPreferencesWindowController::setUpAnimation()
{
    m_contentHiding->setOpacity(0);
    m_contentHiding->setEnabled(false);
    m_contentView->setGraphicsEffect(m_contentHiding);
    connect(&m_sizeAnimation, &QVariantAnimation::valueChanged, this,
        [this](const QVariant &size) { resizeContent(size.toSize()); });
    connect(&m_sizeAnimation, &QVariantAnimation::finished, this, [this] {
        // An animation without a duration is at its end before it starts, and emits no value.
        resizeContent(m_sizeAnimation.endValue().toSize());
        m_contentHiding->setEnabled(false);
    });
}

void AppPreferencesWindowController::addCloseCommand()
{
    m_closeCommand.setObjectName(PreferencesPaneController::closeWindowItem);
    m_closeCommand.setShortcut(Qt::CTRL | Qt::Key_W);
    connect(&m_closeCommand, &QAction::triggered, this, &AppPreferencesWindowController::closeWindow);
    m_window.addAction(&m_closeCommand);
}

void AppPreferencesWindowController::closeWindow()
{
    PreferencesPaneController *pane = m_shownView ? viewController(m_selectedIdentifier) : nullptr;
    if (!pane) {
        m_window.close();
    } else if (pane->validateMenuItem(m_closeCommand)) {
        pane->closeWindow();
    }
}

const PreferencesToolbarItem *AppPreferencesWindowController::itemWith(const QString &identifier) const
{
    const auto found = std::find_if(m_toolbarItems.begin(), m_toolbarItems.end(),
        [&identifier](const PreferencesToolbarItem &item) { return item.identifier == identifier; });
    return found == m_toolbarItems.end() ? nullptr : &*found;
}

PreferencesPaneController *AppPreferencesWindowController::viewController(const QString &identifier)
{
    if (const auto known = m_viewControllers.find(identifier); known != m_viewControllers.end()) {
        return known->second.get();
    }
    auto created = m_description.instantiateController(identifier);
    if (!created) {
        return nullptr;
    }
    connect(
        created.get(), &PreferencesPaneController::helpRequested, this, &AppPreferencesWindowController::helpRequested);
    return m_viewControllers.emplace(identifier, std::move(created)).first->second.get();
}

void AppPreferencesWindowController::switchToPane(const QString &identifier)
{
    const PreferencesToolbarItem *item = itemWith(identifier);
    PreferencesPaneController *controller = item ? viewController(identifier) : nullptr;
    if (!controller || &controller->view() == m_shownView) {
        return;
    }
    finishAnimation();
    m_window.setWindowTitle(m_toolbarItems.size() < 2 ? tr("Preferences", "Window Title for Preferences") : item->name);
    m_selectedIdentifier = identifier;
    if (m_shownView) {
        m_shownView->hide();
    }
    m_shownView = &controller->view();
    m_shownView->setAccessibleName(item->name);
    m_shownView->setParent(m_contentView);
    m_shownView->installEventFilter(this);
    fitWindow();
    m_shownView->show();
    m_shownView->setFocus();
}

/// Marks the shown pane's item again: Qt has marked the clicked one, even if its pane could not be shown.
void AppPreferencesWindowController::markSelectedItem()
{
    const QList<QAction *> items = m_installedItems.actions();
    for (QAction *item : items) {
        item->setChecked(item->objectName() == m_selectedIdentifier);
    }
}

void AppPreferencesWindowController::fitWindow()
{
    const QSize size = fittingSize(*m_shownView);
    m_shownView->setGeometry({{0, 0}, size});
    if (size == std::exchange(m_fittingSize, size)) {
        return;
    }
    finishAnimation();
    if (!m_window.isVisible()) {
        resizeContent(size);
        return;
    }
    m_contentHiding->setEnabled(true);
    m_sizeAnimation.run(m_contentView->size(), size);
}

/// The window's top edge keeps its place.
void AppPreferencesWindowController::resizeContent(QSize size)
{
    m_contentView->setFixedSize(size);
    m_window.layout()->activate();
}

void AppPreferencesWindowController::finishAnimation()
{
    if (m_sizeAnimation.state() == QAbstractAnimation::Running) {
        m_sizeAnimation.setCurrentTime(m_sizeAnimation.duration());
    }
}

} // namespace tunedeck

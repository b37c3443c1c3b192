// SPDX-License-Identifier: MIT
#include "preferences/AppPreferencesWindowController.h"

#include "PreferencesDesk.h"
#include "preferences/PreferencesPaneController.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolBar>
#include <QVBoxLayout>

using namespace tunedeck;

namespace {
const QString generalPane = QStringLiteral("General");
const QString interfacePane = QStringLiteral("Interface");
const QString updatesPane = QStringLiteral("Updates");

/// A pane with one button in it, as high as the test wants.
class PlainPane : public PreferencesPaneController {
public:
    explicit PlainPane(int height)
    {
        auto *layout = new QVBoxLayout(&m_view);
        layout->setContentsMargins(0, 0, 0, 0);
        auto *button = new QPushButton(QStringLiteral("Contents"));
        button->setFixedHeight(height);
        layout->addWidget(button);
    }

    QWidget &view() override { return m_view; }
    [[nodiscard]] bool validateMenuItem(const QAction &item) const override
    {
        validated.append(item.objectName());
        return closes;
    }
    void closeWindow() override { ++closings; }

    int closings = 0;
    bool closes = true;
    mutable QStringList validated;

private:
    QWidget m_view;
};

QIcon plainImage(const QString &)
{
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::black);
    return {pixmap};
}

/// Panes A, B and C of 100, 200 and 300 points.
AppPreferences plainPreferences()
{
    return {
        {
            {QStringLiteral("A"), QStringLiteral("First"), QStringLiteral("a")},
            {QStringLiteral("B"), QStringLiteral("Second"), QStringLiteral("b")},
            {QStringLiteral("C"), QStringLiteral("Third"), QStringLiteral("c")},
        },
        plainImage,
        [](const QString &identifier) {
            return std::make_unique<PlainPane>(100 * (identifier.at(0).unicode() - u'A' + 1));
        },
    };
}

QToolBar *toolbarOf(AppPreferencesWindowController &controller)
{
    return controller.window().findChild<QToolBar *>(QStringLiteral("PreferencesWindowToolbar"));
}

QAction *item(AppPreferencesWindowController &controller, const QString &identifier)
{
    return toolbarOf(controller)->findChild<QAction *>(identifier, Qt::FindDirectChildrenOnly);
}

/// The identifiers of the items that look selected.
QStringList selection(AppPreferencesWindowController &controller)
{
    QStringList identifiers;
    for (const QAction *action : toolbarOf(controller)->actions()) {
        if (action->isChecked()) {
            identifiers.append(action->objectName());
        }
    }
    return identifiers;
}

int contentHeight(AppPreferencesWindowController &controller)
{
    return controller.window().centralWidget()->height();
}

bool showsContents(AppPreferencesWindowController &controller)
{
    const QWidget *content = controller.window().centralWidget();
    const QImage picture = controller.window().grab(content->geometry()).toImage();
    QImage plain(picture.size(), picture.format());
    plain.fill(picture.pixelColor(0, 0));
    return picture != plain;
}
} // namespace

class AppPreferencesWindowControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_style = new TimedStyle;
        QApplication::setStyle(m_style);
    }

    void init()
    {
        failOnWarning();
        m_style->animationDuration = 0;
    }

    void cleanup() { QApplication::setFont(QFont()); }

    void theFirstOpeningShowsGeneral()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        QVERIFY(!controller.window().isVisible());
        controller.showWindow();
        QVERIFY(controller.window().isVisible());
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("General"));
        QCOMPARE(controller.window().width(), 450);
        QCOMPARE(selection(controller), {generalPane});
        QVERIFY(toolbarOf(controller)->isVisible());
        QVERIFY(showsContents(controller));
    }

    void ctrlWClosesTheWindowByWayOfThePaneOnShow()
    {
        PreferencesDesk desk;
        QList<PlainPane *> panes;
        AppPreferences description = plainPreferences();
        description.instantiateController = [&panes](const QString &) {
            auto pane = std::make_unique<PlainPane>(100);
            panes.append(pane.get());
            return pane;
        };
        AppPreferencesWindowController controller(description, desk.defaults);
        controller.showWindow();
        QVERIFY(QTest::qWaitForWindowActive(&controller.window()));
        const auto pressCtrlW = [&controller] {
            QTest::keyClick(controller.window().windowHandle(), Qt::Key_W, Qt::ControlModifier);
        };
        pressCtrlW();
        QCOMPARE(panes.at(0)->validated, {QStringLiteral("File_CloseWindow")});
        QCOMPARE(panes.at(0)->closings, 1);
        item(controller, QStringLiteral("B"))->trigger();
        pressCtrlW();
        QCOMPARE(panes.at(1)->closings, 1);
        QCOMPARE(panes.at(0)->closings, 1);
        panes.at(1)->closes = false;
        pressCtrlW();
        QCOMPARE(panes.at(1)->closings, 1);
        QVERIFY(controller.window().isVisible());
    }

    void ctrlWClosesEachPane_data()
    {
        QTest::addColumn<QString>("pane");
        for (const QString &pane : {generalPane, interfacePane, updatesPane}) {
            QTest::newRow(qPrintable(pane)) << pane;
        }
    }

    void ctrlWClosesEachPane()
    {
        QFETCH(const QString, pane);
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        controller.showWindow();
        item(controller, pane)->trigger();
        QVERIFY(QTest::qWaitForWindowActive(&controller.window()));
        QTest::keyClick(controller.window().windowHandle(), Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!controller.window().isVisible());
    }

    void ctrlWClosesAWindowWithoutPanes()
    {
        PreferencesDesk desk;
        AppPreferences description = plainPreferences();
        description.symbolImage = [](const QString &) { return QIcon(); };
        AppPreferencesWindowController controller(description, desk.defaults);
        controller.showWindow();
        controller.window().actions().constFirst()->trigger();
        QVERIFY(!controller.window().isVisible());
    }

    void itsToolbarHasThreePanes()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        const QStringList identifiers{generalPane, interfacePane, updatesPane};
        QCOMPARE(controller.toolbarDefaultItemIdentifiers(), identifiers);
        QCOMPARE(controller.toolbarAllowedItemIdentifiers(), identifiers);
        QCOMPARE(controller.toolbarSelectableItemIdentifiers(), identifiers);
        QCOMPARE(toolbarOf(controller)->actions().size(), 3);
        QVERIFY(!toolbarOf(controller)->isMovable());
        QCOMPARE(controller.toolbarItems().at(2).name, QStringLiteral("Updates"));
        QVERIFY(!controller.toolbarItems().at(2).image.isNull());
    }

    void aToolbarItemIsMadeAnewOnEveryCall()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        const auto first = controller.toolbarItem(interfacePane);
        const auto second = controller.toolbarItem(interfacePane);
        QVERIFY(first && second && first != second);
        QCOMPARE(first->objectName(), interfacePane);
        QCOMPARE(first->text(), QStringLiteral("Interface"));
        QCOMPARE(first->iconText(), QStringLiteral("Interface"));
        QVERIFY(!first->icon().isNull());
        first->trigger();
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("Interface"));
        QVERIFY(!controller.toolbarItem(QStringLiteral("Nonsense")));
    }

    void everyPaneGivesTheWindowItsTitleAndHeightBelowTheSameTopEdge()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        controller.showWindow();
        const QPoint topLeft = controller.window().frameGeometry().topLeft();
        QList<int> heights;
        for (const QString &pane : {generalPane, interfacePane, updatesPane, generalPane}) {
            item(controller, pane)->trigger();
            QCOMPARE(controller.window().windowTitle(), pane);
            QCOMPARE(selection(controller), {pane});
            QCOMPARE(controller.window().width(), 450);
            QCOMPARE(controller.window().minimumSize(), controller.window().maximumSize());
            QCOMPARE(controller.window().frameGeometry().topLeft(), topLeft);
            QCOMPARE(controller.window().height(), toolbarOf(controller)->height() + contentHeight(controller));
            heights.append(contentHeight(controller));
        }
        QVERIFY(heights.at(1) != heights.at(0));
        QVERIFY(heights.at(2) < heights.at(1));
        QCOMPARE(heights.at(3), heights.at(0));
    }

    void theShownPaneFillsTheContentAndHasTheKeyboard()
    {
        PreferencesDesk desk;
        PlainPane *made = nullptr;
        AppPreferences description = plainPreferences();
        description.instantiateController = [&made](const QString &) {
            auto pane = std::make_unique<PlainPane>(120);
            made = pane.get();
            return pane;
        };
        AppPreferencesWindowController controller(description, desk.defaults);
        controller.showWindow();
        const PlainPane *first = made;
        item(controller, QStringLiteral("B"))->trigger();
        QVERIFY(made != first);
        QCOMPARE(made->view().geometry(), QRect(0, 0, 450, 120));
        QVERIFY(made->view().isVisible());
        QVERIFY(made->view().hasFocus() || !controller.window().isActiveWindow());
        QCOMPARE(controller.window().focusWidget(), &made->view());
    }

    void aPaneIsMadeWhenItIsFirstSelectedAndKept()
    {
        PreferencesDesk desk;
        QStringList made;
        AppPreferences description = plainPreferences();
        description.instantiateController = [&made](const QString &identifier) {
            made.append(identifier);
            return std::make_unique<PlainPane>(100);
        };
        AppPreferencesWindowController controller(description, desk.defaults);
        QCOMPARE(made, {QStringLiteral("A")});
        for (const char *pane : {"C", "A", "C", "A"}) {
            item(controller, QLatin1String(pane))->trigger();
        }
        controller.window().close();
        controller.showWindow();
        QCOMPARE(made, QStringList({QStringLiteral("A"), QStringLiteral("C")}));
    }

    void theWindowGrowsAndShrinksInStepsWithItsContentsHidden_data()
    {
        QTest::addColumn<QString>("pane");
        QTest::addColumn<int>("height");
        QTest::newRow("grows") << QStringLiteral("C") << 300;
        QTest::newRow("shrinks") << QStringLiteral("A") << 100;
    }

    void theWindowGrowsAndShrinksInStepsWithItsContentsHidden()
    {
        QFETCH(const QString, pane);
        QFETCH(const int, height);
        PreferencesDesk desk;
        AppPreferencesWindowController controller(plainPreferences(), desk.defaults);
        controller.showWindow();
        item(controller, QStringLiteral("B"))->trigger();
        QCOMPARE(contentHeight(controller), 200);
        QVERIFY(showsContents(controller));

        const QPoint topLeft = controller.window().frameGeometry().topLeft();
        // This is long enough for the test to see a step.
        m_style->animationDuration = 20'000;
        item(controller, pane)->trigger();
        QCOMPARE(contentHeight(controller), 200);
        QVERIFY(!showsContents(controller));
        QTRY_VERIFY(contentHeight(controller) != 200);
        QVERIFY(contentHeight(controller) != height);
        QVERIFY(!showsContents(controller));
        QCOMPARE(controller.window().frameGeometry().topLeft(), topLeft);
    }

    void theContentsAreShownWhenTheWindowHasItsHeight()
    {
        m_style->animationDuration = 50;
        PreferencesDesk desk;
        AppPreferencesWindowController controller(plainPreferences(), desk.defaults);
        controller.showWindow();
        const QPoint topLeft = controller.window().frameGeometry().topLeft();
        item(controller, QStringLiteral("C"))->trigger();
        QVERIFY(!showsContents(controller));
        QTRY_VERIFY(showsContents(controller));
        QCOMPARE(contentHeight(controller), 300);
        QCOMPARE(controller.window().frameGeometry().topLeft(), topLeft);
    }

    void withReducedMotionTheWindowHasItsHeightAtOnce()
    {
        m_style->animationDuration = 100'000;
        PreferencesDesk desk;
        AppPreferencesWindowController controller(plainPreferences(), desk.defaults);
        controller.showWindow();
        controller.setMotionReduced(true);
        item(controller, QStringLiteral("C"))->trigger();
        QCOMPARE(contentHeight(controller), 300);
        QVERIFY(showsContents(controller));
        controller.setMotionReduced(false);
        item(controller, QStringLiteral("A"))->trigger();
        QCOMPARE(contentHeight(controller), 300);
        QVERIFY(!showsContents(controller));
    }

    void aSecondSelectionFinishesTheFirstAtOnce()
    {
        m_style->animationDuration = 100'000;
        PreferencesDesk desk;
        AppPreferencesWindowController controller(plainPreferences(), desk.defaults);
        controller.showWindow();
        item(controller, QStringLiteral("C"))->trigger();
        QCOMPARE(contentHeight(controller), 100);
        item(controller, QStringLiteral("B"))->trigger();
        QCOMPARE(contentHeight(controller), 300);
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("Second"));
        m_style->animationDuration = 0;
        item(controller, QStringLiteral("A"))->trigger();
        QCOMPARE(contentHeight(controller), 100);
        QVERIFY(showsContents(controller));
    }

    void aPaneOfTheSameHeightIsShownAtOnce()
    {
        m_style->animationDuration = 100'000;
        PreferencesDesk desk;
        AppPreferences description = plainPreferences();
        description.instantiateController = [](const QString &) { return std::make_unique<PlainPane>(100); };
        AppPreferencesWindowController controller(description, desk.defaults);
        controller.showWindow();
        item(controller, QStringLiteral("B"))->trigger();
        QVERIFY(showsContents(controller));
    }

    void selectingTheShownPaneAgainChangesNothing()
    {
        m_style->animationDuration = 100'000;
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        controller.showWindow();
        const QRect frame = controller.window().frameGeometry();
        auto *focused = controller.window().findChild<QAbstractButton *>();
        focused->setFocus();
        item(controller, generalPane)->trigger();
        QCOMPARE(selection(controller), {generalPane});
        QCOMPARE(controller.window().frameGeometry(), frame);
        QCOMPARE(controller.window().focusWidget(), focused);
        QVERIFY(showsContents(controller));
    }

    void whatIsNoToolbarItemSelectsNothing()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        QObject other;
        other.setObjectName(interfacePane);
        controller.toolbarItemClicked(other);
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("General"));
        QAction unknown;
        unknown.setObjectName(QStringLiteral("Nonsense"));
        controller.toolbarItemClicked(unknown);
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("General"));
        QCOMPARE(selection(controller), {generalPane});
    }

    void aPaneWithoutAControllerLeavesTheWindowAsItIs()
    {
        PreferencesDesk desk;
        AppPreferences description = plainPreferences();
        description.instantiateController = [](const QString &identifier) {
            return identifier == QStringLiteral("B") ? nullptr : std::make_unique<PlainPane>(100);
        };
        AppPreferencesWindowController controller(description, desk.defaults);
        controller.showWindow();
        const QRect frame = controller.window().frameGeometry();
        item(controller, QStringLiteral("B"))->trigger();
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("First"));
        QCOMPARE(controller.window().frameGeometry(), frame);
        QCOMPARE(selection(controller), {QStringLiteral("A")});
        QVERIFY(showsContents(controller));
        item(controller, QStringLiteral("C"))->trigger();
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("Third"));
    }

    void aMissingSymbolLeavesOutItsPaneAndAllThatComesAfter_data()
    {
        QTest::addColumn<QString>("missing");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("first") << QStringLiteral("a") << QStringList();
        QTest::newRow("second") << QStringLiteral("b") << QStringList({QStringLiteral("A")});
        QTest::newRow("third") << QStringLiteral("c") << QStringList({QStringLiteral("A"), QStringLiteral("B")});
    }

    void aMissingSymbolLeavesOutItsPaneAndAllThatComesAfter()
    {
        QFETCH(const QString, missing);
        PreferencesDesk desk;
        AppPreferences description = plainPreferences();
        description.symbolImage = [missing](const QString &symbol) {
            return symbol == missing ? QIcon() : plainImage(symbol);
        };
        AppPreferencesWindowController controller(description, desk.defaults);
        QTEST(controller.toolbarDefaultItemIdentifiers(), "left");
        QVERIFY(!toolbarOf(controller));
        QVERIFY(!controller.window().findChild<QPushButton *>());
        controller.showWindow();
        QVERIFY(controller.window().isVisible());
    }

    void aWindowOfOnePaneHasNoToolbarAndIsTitledPreferences()
    {
        PreferencesDesk desk;
        AppPreferences description = plainPreferences();
        description.panes = description.panes.first(1);
        AppPreferencesWindowController controller(description, desk.defaults);
        controller.showWindow();
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("Preferences"));
        QVERIFY(!toolbarOf(controller)->isVisible());
        QCOMPARE(controller.window().size(), QSize(450, 100));
        QVERIFY(showsContents(controller));
    }

    void escapeClosesItAndReopeningShowsTheLastPaneInTheSavedFrame()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        controller.showWindow();
        QVERIFY(QTest::qWaitForWindowActive(&controller.window()));
        item(controller, updatesPane)->trigger();
        controller.window().move(40, 60);
        const QRect frame = controller.window().frameGeometry();
        QTest::keyClick(controller.window().focusWidget(), Qt::Key_Escape);
        QVERIFY(!controller.window().isVisible());

        controller.showWindow();
        QVERIFY(controller.window().isVisible());
        QCOMPARE(controller.window().frameGeometry(), frame);
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("Updates"));
        QVERIFY(showsContents(controller));
        controller.window().close();

        AppPreferencesWindowController next({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        next.showWindow();
        QCOMPARE(next.window().frameGeometry().topLeft(), QPoint(40, 60));
        QCOMPARE(next.window().windowTitle(), QStringLiteral("General"));
    }

    void showingItAgainBringsItBackFromTheDock()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        controller.showWindow();
        controller.window().showMinimized();
        controller.showWindow();
        QVERIFY(!controller.window().isMinimized());
        QVERIFY(controller.window().isVisible());
    }

    void theWishForHelpIsPassedOn()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        const QSignalSpy requests(&controller, &AppPreferencesWindowController::helpRequested);
        item(controller, updatesPane)->trigger();
        const auto buttons = controller.window().centralWidget()->findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            button->click();
        }
        QCOMPARE(requests.count(), 1);
        QCOMPARE(requests.at(0).at(0).toString(), QStringLiteral("KeepingUpToDate"));
        QCOMPARE(desk.updater.checks, 1);
    }

    void theToolbarIsReachedAndWorkedWithTheKeyboard()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        controller.showWindow();
        QVERIFY(QTest::qWaitForWindowActive(&controller.window()));
        QList<QWidget *> buttons;
        for (QAction *action : toolbarOf(controller)->actions()) {
            buttons.append(toolbarOf(controller)->widgetForAction(action));
            QCOMPARE(spokenName(*buttons.last()), action->objectName());
        }
        QCOMPARE(tabOrder(controller.window()).first(3), buttons);
        QCOMPARE(
            tabOrder(controller.window()).at(3), controller.window().centralWidget()->findChild<QAbstractButton *>());
        buttons.at(1)->setFocus();
        QTest::keyClick(buttons.at(1), Qt::Key_Space);
        QCOMPARE(controller.window().windowTitle(), QStringLiteral("Interface"));
        QTest::keyClick(controller.window().focusWidget(), Qt::Key_Tab);
        QCOMPARE(controller.window().focusWidget(), tabOrder(controller.window()).at(3));
        QVERIFY(qobject_cast<QCheckBox *>(controller.window().focusWidget()));
    }

    void aLargerFontCutsNoTextOff()
    {
        PreferencesDesk desk;
        AppPreferencesWindowController controller({desk.defaults, desk.players, desk.updater, desk.desktopSettings});
        item(controller, interfacePane)->trigger();
        controller.showWindow();
        const int height = contentHeight(controller);
        QFont font;
        font.setPointSize(30);
        QApplication::setFont(font);
        QTRY_VERIFY(contentHeight(controller) > height);
        int boxes = 0;
        for (QWidget *control : tabOrder(controller.window())) {
            if (const auto *box = qobject_cast<QCheckBox *>(control)) {
                ++boxes;
                QTRY_VERIFY(box->width() >= box->sizeHint().width());
                QVERIFY(box->height() >= box->sizeHint().height());
            }
        }
        QCOMPARE(boxes, 3);
        QVERIFY(controller.window().width() > 450);
    }

private:
    TimedStyle *m_style = nullptr;
};

TUNEDECK_TEST(AppPreferencesWindowControllerTest, QApplication)
#include "AppPreferencesWindowControllerTest.moc"

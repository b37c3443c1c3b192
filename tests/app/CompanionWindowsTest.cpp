// SPDX-License-Identifier: MIT
#include "app/CompanionWindows.h"

#include "platform/UserDefaults.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"
#include "window/Window.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

using namespace tunedeck;

class CompanionWindowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aWindowThatOpensBelongsToThePlayer()
    {
        Player player;
        QDialog dialog;
        dialog.show();
        QCOMPARE(dialog.windowHandle()->transientParent(), player.window().windowHandle());
    }

    void itOpensBelowThePlayerWithRoomForTheDrawer()
    {
        Player player;
        player.moveTo({200, 100});
        QWidget window;
        window.resize(300, 200);
        window.show();
        QVERIFY2(window.y() > player.content().top() + WindowController::expandedHeight, "It covers the drawer");
        QCOMPARE(window.geometry().center().x(), player.content().center().x());
    }

    void atTheBottomOfTheScreenItOpensAboveThePlayer()
    {
        Player player;
        player.moveTo({200, player.area().bottom() - 160});
        QWidget window;
        window.resize(300, 200);
        window.show();
        QVERIFY(window.geometry().bottom() < player.content().top());
    }

    void aWindowAsHighAsTheScreenOpensBesideThePlayer()
    {
        Player player;
        player.moveTo({0, 200});
        QWidget window;
        window.resize(200, player.area().height() - 60);
        window.show();
        QVERIFY(window.x() > player.content().right());
        QVERIFY(player.area().contains(window.geometry()));
    }

    void aWindowThatTheUserMovedAwayComesBackThere()
    {
        Player player;
        player.moveTo({200, 100});
        QWidget window;
        window.resize(100, 50);
        window.show();
        const QPoint elsewhere(20, player.area().bottom() - 90);
        window.move(elsewhere);
        window.hide();
        window.show();
        QCOMPARE(window.pos(), elsewhere);
    }

    void aWindowThatWouldCoverThePlayerOpensBesideIt()
    {
        Player player;
        player.moveTo({200, 100});
        QWidget window;
        window.resize(100, 50);
        window.move(210, 110);
        window.show();
        QVERIFY(!window.geometry().intersects(player.content()));
    }

    void itKeepsThePlayersLevel()
    {
        Player player;
        player.window().setLevel(WindowLevel::Floating);
        QDialog dialog;
        dialog.show();
        QVERIFY(isOnTop(dialog));
        player.window().setLevel(WindowLevel::Normal);
        QVERIFY(!isOnTop(dialog));
        player.window().setLevel(WindowLevel::Floating);
        QVERIFY(isOnTop(dialog));
        QVERIFY(dialog.isVisible());
    }

    void aMenuIsLeftAlone()
    {
        Player player;
        player.moveTo({200, 100});
        QMenu menu;
        menu.addAction(QStringLiteral("Item"));
        menu.popup({210, 110});
        QCOMPARE(menu.pos(), QPoint(210, 110));
    }

private:
    /// The player's window on the screen, with its companions.
    class Player {
    public:
        Player() { window().show(); }

        Window &window() { return m_controller.window(); }
        void moveTo(QPoint place) { window().move(place - window().contentRect().topLeft()); }
        QRect content()
        {
            return {window().mapToGlobal(window().contentRect().topLeft()), window().contentRect().size()};
        }
        QRect area() { return window().screen()->availableGeometry(); }

    private:
        QTemporaryDir m_folder;
        UserDefaults m_defaults{m_folder.filePath(QStringLiteral("settings.conf"))};
        WindowController m_controller{m_defaults};
        CompanionWindows m_companions{m_controller.window()};
    };

    static bool isOnTop(const QWidget &window)
    {
        return window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint);
    }
};

TUNEDECK_TEST(CompanionWindowsTest, QApplication)
#include "CompanionWindowsTest.moc"

// SPDX-License-Identifier: MIT
#include "skin/views/WindowButtonsView.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QEnterEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

using namespace tunedeck;

class WindowButtonsViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void itTellsWhileThePointerIsOverIt()
    {
        WindowButtonsView view;
        QVERIFY(!view.mouseHovering());
        QSignalSpy told(&view, &WindowButtonsView::mouseHoveringChanged);
        QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(&view, &enter);
        QVERIFY(view.mouseHovering());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&view, &leave);
        QVERIFY(!view.mouseHovering());
        QCOMPARE(told.count(), 2);
        QCOMPARE(told.at(0).first().toBool(), true);
        QCOMPARE(told.at(1).first().toBool(), false);
    }

    /// On X11, Qt reports no Leave then. The menu gets the pointer's moves.
    void aPointerThatLeavesItWhileAMenuIsOpenHasLeft()
    {
        WindowButtonsView view;
        view.resize(22, 60);
        view.show();
        QMenu menu;
        // Qt 6.8 does not open an empty menu.
        menu.addAction(QStringLiteral("Zoom"));
        menu.popup(view.mapToGlobal(QPoint(10, 10)));
        QCOMPARE(QApplication::activePopupWidget(), &menu);
        QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(&view, &enter);
        movePointer(menu, view.mapToGlobal(QPoint(5, 5)));
        QVERIFY(view.mouseHovering());
        movePointer(menu, view.mapToGlobal(QPoint(5, 70)));
        QVERIFY(!view.mouseHovering());
    }

private:
    static void movePointer(QMenu &menu, QPoint place)
    {
        QMouseEvent move(
            QEvent::MouseMove, menu.mapFromGlobal(place), place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&menu, &move);
    }
};

TUNEDECK_TEST(WindowButtonsViewTest, QApplication)
#include "WindowButtonsViewTest.moc"

// SPDX-License-Identifier: MIT
#include "skin/views/WindowButtonsView.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QEnterEvent>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace tunedeck;

class WindowButtonsViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

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
};

TUNEDECK_TEST(WindowButtonsViewTest, QApplication)
#include "WindowButtonsViewTest.moc"

// SPDX-License-Identifier: MIT
#include "drawer/PlaylistWindow.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QRegularExpression>
#include <QTest>
#include <QWindow>

using namespace tunedeck;

namespace {
class PaintCounter : public QObject {
public:
    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};
} // namespace

class PlaylistWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itHasNoFrameAndCanBeKey()
    {
        PlaylistWindow window;
        QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    void anotherScreenRefreshesTheShadow()
    {
        PlaylistWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
        PaintCounter paints;
        window.installEventFilter(&paints);
        Q_EMIT window.windowHandle()->screenChanged(QGuiApplication::primaryScreen());
        QTRY_COMPARE(paints.count, 1);
    }
};

TUNEDECK_TEST(PlaylistWindowTest, QApplication)
#include "PlaylistWindowTest.moc"

// SPDX-License-Identifier: MIT
#include "widgets/PicturesOfHiddenWindows.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QBackingStore>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QTest>

#include <memory>

using namespace tunedeck;

namespace {
QImage onScreen(const QWidget &window)
{
    return window.screen()->grabWindow(window.winId()).toImage();
}
} // namespace

class PicturesOfHiddenWindowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnWarning();
        m_pictures = std::make_unique<PicturesOfHiddenWindows>();
    }

    void cleanup() { m_pictures.reset(); }

    void aHiddenWindowHasNone()
    {
        QLabel window(QStringLiteral("text"));
        window.resize(200, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.backingStore()->size(), QSize(200, 100));
        window.close();
        QCOMPARE(window.backingStore()->size(), QSize(1, 1));
    }

    void aWindowThatIsShownAgainLooksAsBefore()
    {
        QWidget window;
        window.setStyleSheet(QStringLiteral("background: #204060; color: white"));
        auto *label = new QLabel(QStringLiteral("text"), &window);
        window.resize(200, 100);
        label->setGeometry(20, 20, 100, 40);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
        const QImage before = onScreen(window);
        QCOMPARE(before.pixelColor(5, 5), QColor(0x20, 0x40, 0x60));
        for (int i = 0; i < 3; ++i) {
            window.hide();
            // What changes meanwhile does not decide what is painted.
            label->setText(QStringLiteral("other"));
            label->setText(QStringLiteral("text"));
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QCoreApplication::processEvents();
            QCOMPARE(onScreen(window), before);
        }
    }

    void aMenuHasNoneOnceItIsClosed()
    {
        QMenu menu;
        menu.addAction(QStringLiteral("command"));
        menu.popup({});
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QVERIFY(menu.backingStore()->size().width() > 1);
        menu.close();
        QCOMPARE(menu.backingStore()->size(), QSize(1, 1));
    }

    void aWindowKeepsItsPictureWhileItsControlsAreHidden()
    {
        QWidget window;
        auto *label = new QLabel(QStringLiteral("text"), &window);
        window.resize(200, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        label->hide();
        QCOMPARE(window.backingStore()->size(), QSize(200, 100));
    }

private:
    std::unique_ptr<PicturesOfHiddenWindows> m_pictures;
};

TUNEDECK_TEST(PicturesOfHiddenWindowsTest, QApplication)
#include "PicturesOfHiddenWindowsTest.moc"

// SPDX-License-Identifier: MIT
#include "widgets/speakNotice.h"

#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QTest>
#include <QTimer>

using namespace tunedeck;

class speakNoticeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aNoticeIsANotificationThatNobodySees()
    {
        QWidget window;
        window.resize(100, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QImage before = window.grab().toImage();
        speakNotice(window, QStringLiteral("Waiting"));
        QCOMPARE(window.findChildren<QWidget *>().size(), 1);
        QWidget *notice = window.findChild<QWidget *>();
        const QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(notice);
        QCOMPARE(accessible->role(), QAccessible::Notification);
        QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Waiting"));
        // Screen readers ignore what is not shown.
        QVERIFY(!accessible->state().invisible);
        QCOMPARE(notice->focusPolicy(), Qt::NoFocus);
        QCOMPARE(window.grab().toImage(), before);
        QVERIFY(!window.childAt(0, 0));
    }

    void theNextNoticeTakesThePlaceOfTheLast()
    {
        QWidget window;
        speakNotice(window, QStringLiteral("Waiting"));
        speakNotice(window, QStringLiteral("The desktop refuses"));
        QCOMPARE(window.findChildren<QWidget *>().size(), 1);
        QCOMPARE(QAccessible::queryAccessibleInterface(window.findChild<QWidget *>())->text(QAccessible::Name),
            QStringLiteral("The desktop refuses"));
    }

    void aNoticeCannotBeReadForEver()
    {
        QWidget window;
        speakNotice(window, QStringLiteral("Waiting"));
        speakNotice(window, QStringLiteral("The desktop refuses"));
        auto *end = window.findChild<QTimer *>();
        QVERIFY(end && elapse(*end));
        QCOMPARE(
            QAccessible::queryAccessibleInterface(window.findChild<QWidget *>())->text(QAccessible::Name), QString());
        QVERIFY(!end->isActive());
        speakNotice(window, QStringLiteral("Waiting"));
        QVERIFY(end->isActive());
    }
};

TUNEDECK_TEST(speakNoticeTest, QApplication)
#include "speakNoticeTest.moc"
